// The part of AppDelegate that is about the settings window and the sync that it drives.

#include "app/AppDelegate.h"

SyncSettings &AppDelegate::syncSettings()
{
    if (!m_syncSettings) {
        m_syncSettings = std::make_unique<SyncSettings>(m_model);
        connect(m_syncSettings.get(), &SyncSettings::syncChanged, this, &AppDelegate::syncChanged);
    }
    return *m_syncSettings;
}

void AppDelegate::openSettings()
{
    if (!m_settings) {
        syncGeneral();
        syncSettings().load();
        m_settings = std::make_unique<SettingsWindow>(m_model, m_general, syncSettings());
        connect(m_settings.get(), &SettingsWindow::closed, this, [this] {
            if (m_settings) {
                m_settings.release()->deleteLater(); // it is still telling us
            }
        });
    }
    m_settings->present();
}

void AppDelegate::syncChanged()
{
    m_stats.forgetStats();
    if (!m_model.hover().x() && !m_widget.isBusy()) {
        m_stats.readStats(StatsFeed::Wait::No);
    }
}
