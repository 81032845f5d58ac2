#include "widget/app/Options.h"

#include "widget/app/UpdateChecker.h"
#include "widget/app/WidgetPanel.h"
#include "widget/core/Paths.h"
#include "widget/platform/ReducedMotion.h"
#include "widget/views/theme/Motion.h"
#include <QFileInfo>

using Option = GeneralSettings::Option;

Options::Options(const Affected &affected, LoginItem loginItem)
    : m_affected(affected)
    , m_loginItem(std::move(loginItem))
{
    connect(
        &m_affected.systemMotion, &ReducedMotion::changed, this, &Options::motionPreferenceChanged);
    connect(&m_affected.general, &GeneralSettings::setRequested, this, &Options::set);
}

void Options::restore(const PersistedState &state)
{
    m_state = state;
    m_state.notch = false; // only ever taken on where the screen has one
    m_affected.model.setTopmost(m_state.topmost);
    m_affected.updates.setUpdateCheckOn(m_state.updateCheck);
    motionPreferenceChanged();
    m_loginItem.refreshAutostart();
}

void Options::start()
{
    applyCodexHook(m_state.launchWithCodex);
    syncGeneral();
}

void Options::store(PersistedState &state) const
{
    for (const OptionRow &row : optionTable()) {
        if (row.stored != nullptr) {
            state.*row.stored = m_state.*row.stored;
        }
    }
}

void Options::set(Option option, bool on)
{
    if (isOn(option) == on || option == Option::Notch) { // no screen of this system has one
        syncGeneral();
        return;
    }
    const OptionRow &row = optionRow(option);
    if (row.stored != nullptr) {
        m_state.*row.stored = on;
    }
    if (row.effect != nullptr) {
        (this->*row.effect)(on);
    }
    Q_EMIT changed();
    syncGeneral();
}

void Options::syncGeneral()
{
    QMap<Option, bool> values;
    for (const OptionRow &row : optionTable()) {
        values[row.option] = isOn(row.option);
    }
    m_affected.general.setValues(values);
    m_affected.general.setCodexInstalled(QFileInfo(Paths::codexHome()).isDir());
}

bool Options::isOn(Option option) const
{
    const OptionRow &row = optionRow(option);
    return row.stored != nullptr ? m_state.*row.stored : m_loginItem.isOn();
}

void Options::motionPreferenceChanged() const
{
    Motion::setReduced(m_affected.systemMotion.reduced() || !m_state.animations);
}

void Options::applyTopmost(bool on)
{
    m_affected.model.setTopmost(on);
    m_affected.widget.applyLevel();
}

void Options::applyAnimations(bool /*on*/)
{
    motionPreferenceChanged();
}

void Options::applyAutostart(bool on)
{
    m_loginItem.setAutostart(on);
}

void Options::applyCodexHook(bool on)
{
    m_codexHook.applyCodexHook(on);
}

void Options::applyUpdateCheck(bool on)
{
    m_affected.updates.setUpdateCheckOn(on);
}

#include "moc_Options.cpp"
