#include "indexer/ThreadNames.h"

#include "indexer/SafeFile.h"
#include "indexer/Title.h"

#include <map>
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

std::optional<std::vector<ThreadName>> readThreadNames(const std::filesystem::path &file)
{
    const FileContent content = readFile(file, largestIndex);
    if (!content.bytes) {
        return std::nullopt;
    }
    std::map<std::string, ThreadName> newest;
    std::istringstream lines(*content.bytes);
    for (std::string line; std::getline(lines, line);) {
        const nlohmann::json entry = nlohmann::json::parse(line, nullptr, false);
        const std::string id = entry.is_object() ? textOf(entry, "id") : std::string();
        if (id.empty()) {
            continue;
        }
        const auto time = parseMoment(textOf(entry, "updated_at")).value_or(TimePoint::min());
        ThreadName &held = newest[id];
        if (time >= held.time) {
            held = {id, tidyName(textOf(entry, "thread_name")), time};
        }
    }
    std::vector<ThreadName> names;
    names.reserve(newest.size());
    for (auto &[id, name] : newest) {
        names.push_back(std::move(name));
    }
    return names;
}

} // namespace indexer
