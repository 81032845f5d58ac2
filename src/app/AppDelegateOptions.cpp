// The part of AppDelegate that is about options: what is remembered, and what a toggle does.

#include "app/AppDelegate.h"
#include "core/Paths.h"
#include "views/theme/Motion.h"
#include <QFileInfo>

void AppDelegate::restore(const PersistedState &state)
{
    m_model.selectTab(state.tab);
    m_model.setProvider(state.provider);
    m_model.setTopmost(state.topmost);
    m_model.setExpanded(state.expanded);
    m_model.setMode(state.view);
    m_widget.restore(!state.hidden, state.windowSpot);
    m_animationsOn = state.animations;
    motionPreferenceChanged();
    m_launchWithClaude = state.launchWithClaude;
    m_launchWithCodex = state.launchWithCodex;
    m_statusLineOn = state.statusLine;
    m_model.setLanguage(state.language);
}

PersistedState AppDelegate::state() const
{
    return {
        .view = m_model.mode(),
        .topmost = m_model.topmost(),
        .hidden = !m_widget.wantsVisible(),
        .expanded = m_model.expanded(),
        .animations = m_animationsOn,
        .updateCheck = m_updates.updateCheckOn(),
        .tab = m_model.tab(),
        .provider = m_model.provider(),
        .notch = false, // only ever taken on where the screen has one
        .launchWithClaude = m_launchWithClaude,
        .launchWithCodex = m_launchWithCodex,
        .statusLine = m_statusLineOn,
        .language = m_model.langPref(),
        .uiLanguage = m_model.langCode(),
        .windowSpot = m_widget.windowSpot(),
        .updateCheckedAt = m_updates.updateCheckedAt(),
        .latestVersion = m_updates.latestVersion(),
    };
}

void AppDelegate::saveState()
{
    m_stateFile.saveState(state());
}

void AppDelegate::syncGeneral()
{
    using Option = GeneralSettings::Option;
    m_general.setValues({
        {Option::Topmost, m_model.topmost()},
        {Option::Notch, false},
        {Option::StatusLine, m_statusLineOn},
        {Option::Animations, m_animationsOn},
        {Option::Autostart, m_loginItem.isOn()},
        {Option::WithClaude, m_launchWithClaude},
        {Option::WithCodex, m_launchWithCodex},
        {Option::Updates, m_updates.updateCheckOn()},
    });
    m_general.setCodexInstalled(QFileInfo(Paths::codexHome()).isDir());
}

/// What is as it is wanted already, whatever a view has shown, stays.
void AppDelegate::set(GeneralSettings::Option option, bool on)
{
    using Option = GeneralSettings::Option;
    syncGeneral();
    if (m_general.binding(option).value() == on) {
        return;
    }
    switch (option) {
    case Option::Topmost:
        return toggleTopmost();
    case Option::StatusLine:
        return toggleStatusLine();
    case Option::Animations:
        return toggleAnimations();
    case Option::Autostart:
        return toggleAutostart();
    case Option::WithClaude:
        return toggleLaunchWithClaude();
    case Option::WithCodex:
        return toggleLaunchWithCodex();
    case Option::Updates:
        return toggleUpdateCheck();
    case Option::Notch:
        return; // no screen of this system has one
    }
}

void AppDelegate::finishToggle()
{
    saveState();
    syncGeneral();
}

void AppDelegate::toggleTopmost()
{
    m_model.setTopmost(!m_model.topmost());
    m_widget.applyLevel();
    finishToggle();
}

void AppDelegate::toggleAnimations()
{
    m_animationsOn = !m_animationsOn;
    motionPreferenceChanged();
    finishToggle();
}

void AppDelegate::toggleAutostart()
{
    m_loginItem.setAutostart(!m_loginItem.isOn());
    finishToggle();
}

void AppDelegate::toggleLaunchWithClaude()
{
    m_launchWithClaude = !m_launchWithClaude;
    finishToggle();
}

void AppDelegate::toggleLaunchWithCodex()
{
    m_launchWithCodex = !m_launchWithCodex;
    m_codexHook.applyCodexHook(m_launchWithCodex);
    finishToggle();
}

void AppDelegate::toggleStatusLine()
{
    m_statusLineOn = !m_statusLineOn;
    finishToggle();
}

void AppDelegate::toggleUpdateCheck()
{
    m_updates.setUpdateCheckOn(!m_updates.updateCheckOn());
    finishToggle();
}

void AppDelegate::motionPreferenceChanged()
{
    Motion::setReduced(m_systemMotion.reduced() || !m_animationsOn);
}
