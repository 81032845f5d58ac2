#include "indexer/Folders.h"

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>
#include <vector>

namespace indexer {

namespace {

namespace fs = std::filesystem;

/// The home folder that the user database names; the environment may have been changed.
fs::path homeFolder()
{
    constexpr std::size_t enough = std::size_t {64} << 10U;
    std::vector<char> buffer(enough);
    passwd entry {};
    passwd *found = nullptr;
    if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr
        || found->pw_dir == nullptr) {
        return "/";
    }
    return found->pw_dir;
}

std::optional<fs::path> configuredFolder(const char *variable)
{
    const char *configured = std::getenv(variable);
    if (configured == nullptr || *configured == '\0') {
        return std::nullopt;
    }
    return configured;
}

} // namespace

fs::path defaultDataFolder()
{
    return homeFolder() / ".kestrelbay";
}

fs::path defaultClaudeFolder()
{
    return homeFolder() / ".claude";
}

std::optional<fs::path> configuredClaudeFolder()
{
    return configuredFolder("CLAUDE_CONFIG_DIR");
}

fs::path defaultCodexFolder()
{
    return homeFolder() / ".codex";
}

std::optional<fs::path> configuredCodexFolder()
{
    return configuredFolder("CODEX_HOME");
}

} // namespace indexer
