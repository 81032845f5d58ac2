#include "indexer/CommandLine.h"

#include "indexer/Folders.h"
#include "indexer/Printable.h"

#include <CLI/CLI.hpp>
#include <map>

namespace indexer {

namespace {

constexpr int usageError = 2;

constexpr const char *purpose =
    "Adds up what Claude Code and Codex used and what that would cost at list prices.\n"
    "\n"
    "Without a command, all transcripts are read and stats.json is written into the data\n"
    "folder, where the Kestrelbay widget finds it. With \"report\", a table is printed instead.";

constexpr const char *examples =
    "Examples:\n"
    "  kestrelbay-indexer                          write ~/.kestrelbay/stats.json\n"
    "  kestrelbay-indexer report                   what each day cost\n"
    "  kestrelbay-indexer report monthly --json    what each month cost, for other programs\n"
    "\n"
    "Files:\n"
    "  DATA/stats.json    the statistics\n"
    "  DATA/codex-limits.json\n"
    "                     how much of the limits of Codex is used, as last written by it\n"
    "  DATA/prices.json   your own prices, if you have any: models listed there replace the\n"
    "                     built-in ones (US dollars per million tokens), for example\n"
    "    {\"models\": {\"my-model\": {\"prices\": [{\"validFrom\": \"2026-11-01\", \"input\": 1,\n"
    "      \"output\": 5, \"write5m\": 1.25, \"write1h\": 2, \"read\": 0.1}]}}}\n"
    "\n"
    "The exit status is 0 when all went well, 1 after a failure, 2 for a wrong command line.";

/// The texts and switches of the command line, before they mean anything.
struct Words {
    std::string data;
    std::string claude;
    std::string codex;
    std::string report = "daily";
    bool asJson = false;
};

void addFolders(CLI::App &app, Words &words)
{
    const auto notEmpty = [](const std::string &value) {
        return value.empty() ? std::string("must not be empty") : std::string();
    };
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

CLI::App *addReport(CLI::App &app, Words &words)
{
    CLI::App *report = app.add_subcommand("report", "Print a table of what was used");
    report->add_option("rows", words.report, "What a row stands for (daily)")
        ->option_text("daily|weekly|monthly|sessions")
        ->check(CLI::IsMember(reportKinds()));
    report->add_flag("--json", words.asJson, "Print JSON instead of a table");
    addFolders(*report, words);
    return report;
}

EarlyEnd earlyEnd(const CLI::App &app, const CLI::ParseError &error)
{
    if (error.get_exit_code() != 0) {
        return {usageError,
            "kestrelbay-indexer: " + printable(error.what())
                + " (try kestrelbay-indexer --help)\n"};
    }
    std::ostringstream text;
    static_cast<void>(app.exit(error, text, text));
    return {0, text.str()};
}

} // namespace

std::variant<Options, EarlyEnd> parseCommandLine(int count, const char *const *arguments)
{
    Words words;
    CLI::App app(purpose, "kestrelbay-indexer");
    app.footer(examples);
    app.set_version_flag(
        "--version", "kestrelbay-indexer " KESTRELBAY_VERSION, "Print the version");
    addFolders(app, words);
    const CLI::App *report = addReport(app, words);
    try {
        app.parse(count, arguments);
    } catch (const CLI::ParseError &error) {
        return earlyEnd(app, error);
    }
    const auto named =
        words.claude.empty() ? configuredClaudeFolder() : std::filesystem::path(words.claude);
    const auto namedCodex =
        words.codex.empty() ? configuredCodexFolder() : std::filesystem::path(words.codex);
    Options options {
        .data = words.data.empty() ? defaultDataFolder() : std::filesystem::path(words.data),
        .claude = named.value_or(defaultClaudeFolder()),
        .isClaudeNamed = named.has_value(),
        .codex = namedCodex.value_or(defaultCodexFolder()),
        .isCodexNamed = !words.codex.empty(), // the variable may outlive the folder
        .report = std::nullopt,
        .asJson = words.asJson,
    };
    if (report->parsed()) {
        options.report = reportKinds().at(words.report);
    }
    return options;
}

} // namespace indexer
