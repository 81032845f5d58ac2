#include "indexer/Help.h"

namespace indexer::help {

const char *const purpose =
    "Adds up what Claude Code and Codex used and what that would cost at list prices.\n"
    "\n"
    "Without a command, new transcripts are read and stats.json is written into the data\n"
    "folder, where the Kestrelbay widget finds it. The commands print in the terminal instead.";

const char *const more =
    "Examples:\n"
    "  kestrelbay-indexer                            write ~/.kestrelbay/stats.json\n"
    "  kestrelbay-indexer report                     what each day cost\n"
    "  kestrelbay-indexer report weekly --since 30d  the weeks of the last thirty days\n"
    "  kestrelbay-indexer report monthly --json      what each month cost, for other programs\n"
    "  kestrelbay-indexer status --waybar            one line for a status bar\n"
    "  kestrelbay-indexer doctor                     what is wrong here, and what to do\n"
    "  kestrelbay-indexer backup kept.sqlite         a copy of what was counted so far\n"
    "\n"
    "\"kestrelbay-indexer COMMAND --help\" tells more of each command.\n"
    "\n"
    "Files:\n"
    "  DATA/stats.json        the statistics\n"
    "  DATA/history.sqlite    what was counted so far, also of transcripts that are gone\n"
    "  DATA/codex-limits.json\n"
    "                         how much of the limits of Codex is used, as last told by it\n"
    "  CLAUDE/usage-limits.json\n"
    "                         the same of Claude Code; only ever read\n"
    "  DATA/prices.json       your own prices, if you have any: models listed there replace\n"
    "                         the built-in ones (US dollars per million tokens), for example\n"
    "    {\"models\": {\"my-model\": {\"prices\": [{\"validFrom\": \"2026-11-01\", \"input\": 1,\n"
    "      \"output\": 5, \"write5m\": 1.25, \"write1h\": 2, \"read\": 0.1}]}}}\n"
    "\n"
    "Environment:\n"
    "  CLAUDE_CONFIG_DIR      Claude Code's folder, unless --claude names one\n"
    "  CODEX_HOME             Codex's folder, unless --codex names one\n"
    "  NO_COLOR               no colours when it is set and not empty\n"
    "  COLUMNS                the width that tables may take on a terminal\n"
    "  TZ                     the time zone whose midnight ends a day\n"
    "\n"
    "The exit status is 0 when all went well, 1 after a failure, 2 for a wrong command line.";

const char *const report = "Print a table of what was used";

const char *const moreOnReport =
    "A DATE is a day of your calendar: 2026-11-20, today, yesterday, or 7d for the first of\n"
    "the last seven days. Both ends count. A week or a month that lies half outside shows\n"
    "what was used inside.\n"
    "\n"
    "A \"*\" behind a cost says that it is an estimate, a \"?\" that no price is known. With\n"
    "--models --json, each model tells the reason: \"unknown\" (no price is known), \"assumed\"\n"
    "(nobody stated the price) or \"incomplete\" (not all that was used was recorded).\n"
    "On a narrow terminal the least important columns are left out.\n"
    "\n"
    "What was read is remembered in the data folder. A report on folders that are named with\n"
    "--claude or --codex is of these alone and remembers nothing, unless --data is there too.\n"
    "\n"
    "Examples:\n"
    "  kestrelbay-indexer report --since 7d --models         by day and model\n"
    "  kestrelbay-indexer report sessions --provider codex   Codex's sessions, newest first\n"
    "  kestrelbay-indexer report monthly --csv >months.csv   for a spreadsheet";

const char *const status = "Tell what is stored, without reading transcripts";

const char *const moreOnStatus =
    "With --waybar, a single line of JSON with text, tooltip, class and percentage is made\n"
    "from stats.json and the two limit files alone. It is printed even when they are missing\n"
    "or damaged. The class is that of the fuller limit: normal, warning from 60 %, critical\n"
    "from 85 %; stale when the statistics are not of today, none when there is nothing.\n"
    "\n"
    "For Waybar:\n"
    "  \"custom/kestrelbay\": {\"exec\": \"kestrelbay-indexer status --waybar\",\n"
    "    \"return-type\": \"json\", \"interval\": 60}";

const char *const doctor = "Look for what is wrong, and say what to do about it";

const char *const moreOnDoctor =
    "Each line begins with \"ok\", \"note\" (worth knowing) or \"problem\". Nothing is changed, "
    "and\n"
    "no credentials are opened. The exit status is 1 when there is a problem.";

const char *const backup = "Copy the history into one file";

const char *const moreOnBackup =
    "What was counted so far is copied to the last answer, also while others count on: a copy of\n"
    "history.sqlite alone would lack the newest ones. A FILE that is there is replaced, unless "
    "the\n"
    "history is damaged. To go back to a copy, remove history.sqlite-wal and history.sqlite-shm\n"
    "from the data folder and put it there as history.sqlite.";

} // namespace indexer::help
