#include "widget/model/OptionTable.h"

#include "widget/text/Strings.h"
#include <algorithm>
#include <array>
#include <QSysInfo>

using namespace Qt::StringLiterals;

using Option = GeneralSettings::Option;
using State = PersistedState;
using Effects = OptionEffects;

namespace {

constexpr std::array rows {
    OptionRow {Option::Topmost, "topmost"_L1, &State::topmost, "menuTopmost"_L1, {},
        &Effects::applyTopmost},
    OptionRow {Option::Notch, "notch"_L1, &State::notch, "menuNotch"_L1, u"Notch view"},
    OptionRow {Option::StatusLine, "statusLine"_L1, &State::statusLine, "menuStatusLine"_L1,
        u"Status line in Claude Code"},
    OptionRow {Option::Animations, "animations"_L1, &State::animations, "settingsAnimations"_L1,
        u"Animations", &Effects::applyAnimations},
    OptionRow {Option::Autostart, {}, nullptr, "menuWithWindows"_L1, {}, &Effects::applyAutostart},
    OptionRow {Option::WithClaude, "launchWithClaude"_L1, &State::launchWithClaude,
        "menuWithClaude"_L1, {}},
    OptionRow {Option::WithCodex, "launchWithCodex"_L1, &State::launchWithCodex, "menuWithCodex"_L1,
        u"Open with Codex", &Effects::applyCodexHook},
    OptionRow {Option::Updates, "updateCheck"_L1, &State::updateCheck, "menuUpdates"_L1, {},
        &Effects::applyUpdateCheck},
};

} // namespace

std::span<const OptionRow> optionTable()
{
    return rows;
}

const OptionRow &optionRow(Option option)
{
    static_assert(std::ranges::is_sorted(rows, {}, &OptionRow::option));
    return rows.at(static_cast<std::size_t>(option));
}

QString optionTitle(Option option, const Strings &strings)
{
    const OptionRow &row = optionRow(option);
    QString title = row.english.isEmpty() ? strings.t(row.text)
                                          : strings.text(row.text, row.english.toString());
    if (option != Option::Autostart) {
        return title;
    }
    const bool onMac = QSysInfo::kernelType() == "darwin"_L1;
    return title.replace("Windows"_L1, onMac ? "macOS"_L1 : "Linux"_L1);
}
