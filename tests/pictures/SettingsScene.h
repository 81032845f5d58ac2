#pragma once

#include "FakeClock.h"
#include "widget/app/SettingsWindow.h"
#include "widget/model/WidgetModel.h"
#include "widget/scripts/SyncSettings.h"

/// One state of the settings that a picture is taken of; what is left out is ordinary.
struct SettingsScene {
    enum class Tab { General, Data };
    enum class Sync { Ready, Off, Busy, Failed };

    const char *name;
    Tab tab = Tab::General;
    int devices = 1; ///< as many are linked
    Sync sync = Sync::Ready;
    bool hasPassword = false;
    bool updateOffered = false;
    const char *opened = nullptr; ///< what is in front, by its object name
    double scrolled = 0;          ///< 0 is at the top, 1 at the end
    bool enlarged = false;        ///< is to be seen with a larger system font, too
};

[[nodiscard]] QList<SettingsScene> allSettingsScenes();

/// The real window at the moment of the canned figures, in the state of a scene.
class SettingsStage final {
public:
    SettingsStage(const SettingsScene &scene, const QString &language);
    ~SettingsStage();
    Q_DISABLE_COPY_MOVE(SettingsStage)

    /// Lets all come to rest and to its place; false when it does not.
    [[nodiscard]] bool settle();
    [[nodiscard]] SettingsWindow &window() { return m_window; }

private:
    const SettingsScene &m_scene;
    FakeClock m_clock;
    WidgetModel m_model;
    GeneralSettings m_general {nullptr};
    SyncSettings m_sync {m_model};
    SettingsWindow m_window;
    QQuickItem *m_root = nullptr;
};
