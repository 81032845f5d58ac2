#include "indexer/CommandLine.h"

#include "formats/Folders.h"
#include "indexer/Help.h"
#include "indexer/terminal/Printable.h"
#include "usage/values/DayName.h"

#include <CLI/CLI.hpp>
#include <map>

namespace indexer {

using namespace usage;

namespace {

constexpr int usageError = 2;

/// The texts and switches of the command line, before they mean anything.
struct Words {
    std::string data;
    std::string claude;
    std::string codex;
    std::string report = "daily";
    std::string provider;
    std::string since;
    std::string until;
    bool asJson = false;
    bool asCsv = false;
    bool byModel = false;
    bool asStatusJson = false;
    bool asWaybar = false;
    std::string backup;
};

/// The commands of the command line, once they are set up.
struct Commands {
    const CLI::App *report = nullptr;
    const CLI::App *status = nullptr;
    const CLI::App *doctor = nullptr;
    const CLI::App *backup = nullptr;
};

std::string notEmpty(const std::string &value)
{
    return value.empty() ? std::string("must not be empty") : std::string();
}

void addFolders(CLI::App &app, Words &words)
{
    app.add_option("--data", words.data, "Folder of stats.json and prices.json (~/.kestrelbay)")
        ->option_text("DIR")
        ->check(notEmpty);
    app.add_option(
           "--claude", words.claude, "Claude Code's folder ($CLAUDE_CONFIG_DIR, else ~/.claude)")
        ->option_text("DIR")
        ->check(notEmpty);
    app.add_option("--codex", words.codex, "Codex's folder ($CODEX_HOME, else ~/.codex)")
        ->option_text("DIR")
        ->check(notEmpty);
}

const std::map<std::string, ReportKind> &reportKinds()
{
    static const std::map<std::string, ReportKind> kinds {
        {"daily", ReportKind::Daily},
        {"weekly", ReportKind::Weekly},
        {"monthly", ReportKind::Monthly},
        {"sessions", ReportKind::Sessions},
    };
    return kinds;
}

const std::map<std::string, Provider> &providers()
{
    static const std::map<std::string, Provider> known {
        {"claude", Provider::Claude},
        {"codex", Provider::Codex},
    };
    return known;
}

/// Says what is wrong with a day, if anything.
CLI::Validator isDay(Day today)
{
    return CLI::Validator(
        [today](const std::string &value) {
            return parseDayName(value, today)
                ? std::string()
                : "no such day: " + value + " (a day is 2026-11-20, today, yesterday or 7d)";
        },
        "DATE");
}

const CLI::App *addReport(CLI::App &app, Words &words, Day today)
{
    CLI::App *report = app.add_subcommand("report", help::report);
    report->footer(help::moreOnReport);
    report->add_option("rows", words.report, "What a row stands for (daily)")
        ->option_text("daily|weekly|monthly|sessions")
        ->check(CLI::IsMember(reportKinds()));
    report->add_option("--provider", words.provider, "Only what this assistant used")
        ->option_text("claude|codex")
        ->check(CLI::IsMember(providers()));
    report->add_option("--since", words.since, "Only from this day on")
        ->option_text("DATE")
        ->check(isDay(today));
    report->add_option("--until", words.until, "Only up to this day")
        ->option_text("DATE")
        ->check(isDay(today));
    report->add_flag("--models", words.byModel, "Show tokens and cost of each model too");
    CLI::Option *json = report->add_flag("--json", words.asJson, "Print JSON instead of a table");
    report->add_flag("--csv", words.asCsv, "Print comma-separated values instead of a table")
        ->excludes(json);
    addFolders(*report, words);
    return report;
}

const CLI::App *addStatus(CLI::App &app, Words &words)
{
    CLI::App *status = app.add_subcommand("status", help::status);
    status->footer(help::moreOnStatus);
    CLI::Option *json =
        status->add_flag("--json", words.asStatusJson, "Print JSON instead of text");
    status->add_flag("--waybar", words.asWaybar, "Print one line of JSON for a status bar")
        ->excludes(json);
    addFolders(*status, words);
    return status;
}

const CLI::App *addDoctor(CLI::App &app, Words &words)
{
    CLI::App *doctor = app.add_subcommand("doctor", help::doctor);
    doctor->footer(help::moreOnDoctor);
    addFolders(*doctor, words);
    return doctor;
}

const CLI::App *addBackup(CLI::App &app, Words &words)
{
    CLI::App *backup = app.add_subcommand("backup", help::backup);
    backup->footer(help::moreOnBackup);
    backup->add_option("file", words.backup, "What the copy is to be called")
        ->option_text("FILE")
        ->required()
        ->check(notEmpty);
    addFolders(*backup, words);
    return backup;
}

Commands addCommands(CLI::App &app, Words &words, Day today)
{
    app.require_subcommand(0, 1);
    return {.report = addReport(app, words, today),
        .status = addStatus(app, words),
        .doctor = addDoctor(app, words),
        .backup = addBackup(app, words)};
}

EarlyEnd wrong(std::string_view what)
{
    return {usageError,
        "kestrelbay-indexer: " + printable(what) + " (try kestrelbay-indexer --help)\n"};
}

EarlyEnd earlyEnd(const CLI::App &app, const CLI::ParseError &error)
{
    if (error.get_exit_code() != 0) {
        return wrong(error.what());
    }
    std::ostringstream text;
    static_cast<void>(app.exit(error, text, text));
    return {0, text.str()};
}

ReportOptions reportOptions(const Words &words, Day today)
{
    ReportOptions options {.kind = reportKinds().at(words.report), .byModel = words.byModel};
    if (words.asJson) {
        options.format = ReportFormat::Json;
    } else if (words.asCsv) {
        options.format = ReportFormat::Csv;
    }
    if (!words.provider.empty()) {
        options.filter.provider = providers().at(words.provider);
    }
    options.filter.since = parseDayName(words.since, today);
    options.filter.until = parseDayName(words.until, today);
    return options;
}

StatusFormat statusFormat(const Words &words)
{
    if (words.asWaybar) {
        return StatusFormat::Waybar;
    }
    return words.asStatusJson ? StatusFormat::Json : StatusFormat::Text;
}

/// The folder that an option names, else the environment. An empty variable names none.
std::optional<std::filesystem::path> namedFolder(
    const std::string &option, const std::optional<std::filesystem::path> &variable)
{
    if (!option.empty()) {
        return option;
    }
    return variable && !variable->empty() ? variable : std::nullopt;
}

Options optionsOf(const Words &words)
{
    const auto claude = namedFolder(words.claude, Folders::namedClaude());
    const auto codex = namedFolder(words.codex, Folders::namedCodex());
    return {
        .data = words.data.empty() ? Folders::data() : std::filesystem::path(words.data),
        .isDataNamed = !words.data.empty(),
        .claude = claude.value_or(Folders::claude()),
        .isClaudeNamed = claude.has_value(),
        .isClaudeArgument = !words.claude.empty(),
        .codex = codex.value_or(Folders::codex()),
        .isCodexNamed = !words.codex.empty(), // the variable may outlive the folder
        .command = UpdateOptions {},
    };
}

} // namespace

std::variant<Options, EarlyEnd> parseCommandLine(
    int count, const char *const *arguments, TimePoint now)
{
    const Day today = LocalCalendar().dayOf(now);
    Words words;
    CLI::App app(help::purpose, "kestrelbay-indexer");
    app.footer(help::more);
    app.set_version_flag(
        "--version", "kestrelbay-indexer " KESTRELBAY_VERSION, "Print the version");
    addFolders(app, words);
    const Commands commands = addCommands(app, words, today);
    try {
        app.parse(count, arguments);
    } catch (const CLI::ParseError &error) {
        return earlyEnd(app, error);
    }
    Options options = optionsOf(words);
    if (commands.report->parsed()) {
        const ReportOptions report = reportOptions(words, today);
        if (report.filter.since && report.filter.until
            && *report.filter.since > *report.filter.until) {
            return wrong("--since: " + dayText(*report.filter.since) + " lies behind --until, "
                + dayText(*report.filter.until));
        }
        options.command = report;
    } else if (commands.status->parsed()) {
        options.command = StatusOptions {statusFormat(words)};
    } else if (commands.doctor->parsed()) {
        options.command = DoctorOptions {};
    } else if (commands.backup->parsed()) {
        options.command = BackupOptions {words.backup};
    }
    return options;
}

} // namespace indexer
