#include "indexer/ThreadBook.h"

#include "indexer/SafeFile.h"
#include "indexer/Title.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <sstream>

namespace indexer {

namespace {

constexpr std::size_t largestIndex = std::size_t {64} << 20U;

std::string textOf(const nlohmann::json &object, const char *key)
{
    const auto found = object.find(key);
    return found != object.end() && found->is_string() ? found->get<std::string>() : std::string();
}

} // namespace

ThreadBook::ThreadBook(TextPool &names)
    : m_names(names)
{
}

const std::string &ThreadBook::title(TextId thread) const
{
    static const std::string none;
    const auto found = m_threads.find(thread);
    if (found == m_threads.end()) {
        return none;
    }
    const auto &[indexed, name, prompt, end] = found->second;
    return !indexed.text.empty() ? indexed.text : !name.text.empty() ? name.text : prompt.text;
}

TimePoint ThreadBook::end(TextId thread) const
{
    const auto found = m_threads.find(thread);
    return found == m_threads.end() ? TimePoint::min() : found->second.end;
}

/// The newest entry of a thread holds; an empty name takes the others back.
void ThreadBook::addIndex(const std::filesystem::path &file)
{
    std::istringstream lines(readFile(file, largestIndex).bytes.value_or(std::string()));
    for (std::string line; std::getline(lines, line);) {
        const nlohmann::json entry = nlohmann::json::parse(line, nullptr, false);
        const std::string id = entry.is_object() ? textOf(entry, "id") : std::string();
        if (id.empty()) {
            continue;
        }
        const auto time = parseMoment(textOf(entry, "updated_at")).value_or(TimePoint::min());
        Dated &indexed = m_threads[m_names.add(id)].indexed;
        if (time >= indexed.time) {
            indexed = {time, tidyName(textOf(entry, "thread_name"))};
        }
    }
}

void ThreadBook::addLine(TextId thread, TimePoint time)
{
    TimePoint &end = m_threads[thread].end;
    end = std::max(end, time);
}

void ThreadBook::addName(TextId thread, TimePoint time, std::string_view token)
{
    Dated &name = m_threads[thread].name;
    std::string text = token.empty() ? std::string() : tidyTitle(token);
    if (time >= name.time) {
        name = {time, std::move(text)};
    }
}

void ThreadBook::addPrompt(TextId thread, TimePoint time, std::string_view token)
{
    Dated &prompt = m_threads[thread].prompt;
    if (!prompt.text.empty() && prompt.time < time) {
        return;
    }
    std::string text = tidyTitle(token);
    if (prompt.text.empty() || time < prompt.time || text < prompt.text) {
        prompt = {time, std::move(text)};
    }
}

} // namespace indexer
