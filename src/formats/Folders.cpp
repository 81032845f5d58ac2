#include "formats/Folders.h"

#include <cerrno>
#include <cstdlib>
#include <pwd.h>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace {

/// Without a slash at its end.
fs::path cleaned(const fs::path &folder)
{
    const fs::path normal = folder.lexically_normal();
    return normal.has_filename() || !normal.has_relative_path() ? normal : normal.parent_path();
}

std::optional<fs::path> homeOfUser()
{
    constexpr std::size_t largest = std::size_t {1} << 20U;
    constexpr std::size_t usual = 4096;
    passwd entry {};
    passwd *found = nullptr;
    for (std::vector<char> buffer(usual); buffer.size() <= largest;
         buffer.resize(buffer.size() * 4)) {
        if (getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found) == ERANGE) {
            continue;
        }
        return found != nullptr && fs::path(found->pw_dir).is_absolute()
            ? std::optional(cleaned(found->pw_dir))
            : std::nullopt;
    }
    return std::nullopt;
}

std::optional<fs::path> named(const char *variable)
{
    const char *value = std::getenv(variable);
    return value != nullptr ? std::optional<fs::path>(value) : std::nullopt;
}

} // namespace

fs::path Folders::home()
{
    if (const auto folder = homeOfUser()) {
        return *folder;
    }
    const fs::path told = named("HOME").value_or(fs::path());
    return told.is_absolute() ? cleaned(told) : fs::path("/");
}

fs::path Folders::data()
{
    return home() / ".kestrelbay";
}

fs::path Folders::claude()
{
    return home() / ".claude";
}

std::optional<fs::path> Folders::namedClaude()
{
    return named("CLAUDE_CONFIG_DIR");
}

fs::path Folders::codex()
{
    return home() / ".codex";
}

std::optional<fs::path> Folders::namedCodex()
{
    return named("CODEX_HOME");
}
