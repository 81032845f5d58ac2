// kestrelbay-bench-home OUT: writes transcripts of both assistants below OUT, in the shape of real
// ones but with as many files, days and bytes as asked for.
//
// OUT/claude and OUT/codex are what the indexer is given. OUT/growth.jsonl are further lines of the
// session in OUT/claude/projects/growing. What stands there already is kept if it was made with the
// same figures.

#include "home/ClaudeTranscript.h"
#include "home/CodexRollout.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <numeric>
#include <sstream>

namespace {

namespace fs = std::filesystem;
using namespace std::chrono;

constexpr sys_days lastDay = year {2026} / June / 30;
constexpr double codexShare = 0.15;
constexpr std::string_view growingSession = "00000000-0000-4000-8000-000000000000";
constexpr std::size_t growingBytes = 400'000;

struct Figures {
    fs::path out;
    std::size_t bytes = 600'000'000;
    std::size_t files = 1600;
    int days = 365;
    std::uint64_t seed = 1;

    /// Another number with each change of what this program writes.
    [[nodiscard]] std::string text() const
    {
        return fmt::format("1: {} bytes, {} files, {} days, seed {}\n", bytes, files, days, seed);
    }
};

std::string content(const fs::path &file)
{
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

void save(const fs::path &file, std::string_view text)
{
    fs::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary);
    stream.write(text.data(), static_cast<std::streamsize>(text.size()));
    stream.close();
    if (!stream) {
        throw fs::filesystem_error("cannot write", file, std::make_error_code(std::errc::io_error));
    }
}

/// A few sessions hold most of the bytes.
std::vector<std::size_t> sizes(Dice &dice, const Figures &figures)
{
    constexpr double largest = 40;
    std::vector<double> weights(figures.files);
    std::generate(weights.begin(), weights.end(), [&dice] { return dice.between(1, largest); });
    const double sum = std::accumulate(weights.begin(), weights.end(), 0.0);
    std::vector<std::size_t> bytes;
    std::transform(weights.begin(), weights.end(), std::back_inserter(bytes), [&](double weight) {
        return static_cast<std::size_t>(static_cast<double>(figures.bytes) * weight / sum);
    });
    return bytes;
}

class Home final {
public:
    explicit Home(const Figures &figures)
        : m_figures(figures)
        , m_dice(figures.seed)
    {
    }

    void write()
    {
        std::size_t file = 0;
        for (const std::size_t bytes : sizes(m_dice, m_figures)) {
            const auto day = days(static_cast<int>(
                file * static_cast<std::size_t>(m_figures.days) / m_figures.files));
            writeFile(lastDay - days(m_figures.days - 1) + day, bytes);
            ++file;
        }
        writeGrowing();
    }

private:
    void writeFile(sys_days day, std::size_t bytes)
    {
        constexpr double subagents = 0.4;
        const bool isCodex = m_dice.share() < codexShare;
        const bool isSubagent = !m_parent.empty() && m_dice.share() < subagents;
        const std::uint64_t project = m_dice.whole(1, 12);
        const Session session {.id = isSubagent && !isCodex ? m_parent : m_dice.uuid(),
            .folder = fmt::format("/srv/work/project-{}", project),
            .start = day + hours(7) + seconds(m_dice.whole(0, 20'000)),
            .bytes = bytes,
            .isSubagent = isSubagent && !isCodex};
        // Dice of its own: homes of any number of bytes have the same sessions.
        Dice dice(m_dice.next());
        if (isCodex) {
            save(codexFile(session), CodexRollout(m_prose, dice, session).write());
            return;
        }
        save(claudeFile(session), ClaudeTranscript(m_prose, dice, session).write());
        m_parent = session.id;
    }

    [[nodiscard]] fs::path codexFile(const Session &session) const
    {
        const std::string time = stamp(session.start);
        std::string name = time.substr(0, 19);
        std::replace(name.begin(), name.end(), ':', '-');
        return m_figures.out / "codex/sessions" / time.substr(0, 4) / time.substr(5, 2)
            / time.substr(8, 2) / fmt::format("rollout-{}-{}.jsonl", name, session.id);
    }

    fs::path claudeFile(const Session &session)
    {
        if (!session.isSubagent) {
            std::string slug = session.folder;
            std::replace(slug.begin(), slug.end(), '/', '-');
            m_parentFolder = m_figures.out / "claude/projects" / slug / session.id;
            return m_parentFolder.native() + ".jsonl";
        }
        return m_parentFolder / "subagents" / fmt::format("agent-{}.jsonl", m_dice.hex(17));
    }

    void writeGrowing()
    {
        Session session {.id = std::string(growingSession),
            .folder = "/srv/work/growing",
            .start = lastDay + hours(8),
            .bytes = growingBytes};
        save(m_figures.out / "claude/projects/growing" / fmt::format("{}.jsonl", growingSession),
            ClaudeTranscript(m_prose, m_dice, session).write());
        session.start += hours(4);
        session.bytes = 4 * growingBytes;
        save(m_figures.out / "growth.jsonl", ClaudeTranscript(m_prose, m_dice, session).write());
    }

    const Figures &m_figures;
    Dice m_dice;
    Prose m_prose;
    std::string m_parent; ///< the session that sub-agents work for
    fs::path m_parentFolder;
};

void makeHome(const Figures &figures)
{
    const fs::path madeWith = figures.out / "made-with";
    if (content(madeWith) == figures.text()) {
        return;
    }
    if (fs::exists(figures.out) && !fs::exists(madeWith)) {
        throw fs::filesystem_error(
            "not made by this program", figures.out, std::make_error_code(std::errc::file_exists));
    }
    fs::remove_all(figures.out);
    save(madeWith, {}); // what is left half-way is replaced the next time
    Home(figures).write();
    save(madeWith, figures.text());
}

} // namespace

int main(int count, char **words)
{
    Figures figures;
    CLI::App app("Writes transcripts of a realistic shape to measure with.");
    app.add_option("out", figures.out, "folder, replaced if it was made otherwise")->required();
    app.add_option("--bytes", figures.bytes, "of all transcripts together, about");
    app.add_option("--files", figures.files, "transcripts")->check(CLI::PositiveNumber);
    app.add_option("--days", figures.days, "that end with 2026-06-30")->check(CLI::PositiveNumber);
    app.add_option("--seed", figures.seed, "another number makes others of the same shape");
    CLI11_PARSE(app, count, words);
    try {
        makeHome(figures);
    } catch (const fs::filesystem_error &error) {
        fmt::print(stderr, "kestrelbay-bench-home: {}\n", error.what());
        return 1;
    }
}
