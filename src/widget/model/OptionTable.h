#pragma once

#include "widget/model/GeneralSettings.h"
#include "widget/model/PersistedState.h"
#include <span>

class Strings;

/// What switching an option does beyond remembering and showing it.
class OptionEffects {
public:
    virtual void applyTopmost(bool on) = 0;
    virtual void applyAnimations(bool on) = 0;
    virtual void applyAutostart(bool on) = 0;
    virtual void applyCodexHook(bool on) = 0;
    virtual void applyUpdateCheck(bool on) = 0;

protected:
    ~OptionEffects() = default;
};

/// All that tells one option from another.
struct OptionRow {
    GeneralSettings::Option option {};
    QLatin1String key;                                ///< in `state.json`
    bool PersistedState::*stored = nullptr;           ///< null where the option is kept elsewhere
    QLatin1String text;                               ///< key of its title
    QStringView english;                              ///< the title, if the program carries it
    void (OptionEffects::*effect)(bool on) = nullptr; ///< the companion scripts see to the others
};

/// Every option, in the order of their numbers.
[[nodiscard]] std::span<const OptionRow> optionTable();
[[nodiscard]] const OptionRow &optionRow(GeneralSettings::Option option);

/// The option's title. That of the start at login names the system it runs on where it names one.
[[nodiscard]] QString optionTitle(GeneralSettings::Option option, const Strings &strings);
