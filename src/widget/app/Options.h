#pragma once

#include "widget/model/OptionTable.h"
#include "widget/platform/LoginItem.h"
#include "widget/scripts/CodexHook.h"

class ReducedMotion;
class UpdateChecker;
class WidgetModel;
class WidgetPanel;

/// Keeps the general options, does what switching one of them means, and has it shown and saved.
class Options final : public QObject, private OptionEffects {
    Q_OBJECT

public:
    /// What the options are about; all of it outlives them.
    struct Affected {
        WidgetModel &model;
        WidgetPanel &widget;
        UpdateChecker &updates;
        ReducedMotion &systemMotion;
        GeneralSettings &general; ///< where they are shown
    };

    Options(const Affected &affected, LoginItem loginItem);

    /// Takes up what is remembered. Other programs are not touched before `start`.
    void restore(const PersistedState &state);
    /// Has what other programs keep of the options follow them.
    void start();
    void store(PersistedState &state) const;
    /// Switches an option; nothing happens when it is as it is wanted already.
    void set(GeneralSettings::Option option, bool on);
    void flip(GeneralSettings::Option option) { set(option, !isOn(option)); }
    /// Brings what is shown of the options up to date.
    void syncGeneral();

Q_SIGNALS:
    /// An option was switched, which is to be remembered.
    void changed();

private:
    [[nodiscard]] bool isOn(GeneralSettings::Option option) const;
    void motionPreferenceChanged() const;
    void applyTopmost(bool on) override;
    void applyAnimations(bool on) override;
    void applyAutostart(bool on) override;
    void applyCodexHook(bool on) override;
    void applyUpdateCheck(bool on) override;

    Affected m_affected;
    LoginItem m_loginItem;
    CodexHook m_codexHook;
    PersistedState m_state; ///< of which only the options count
};
