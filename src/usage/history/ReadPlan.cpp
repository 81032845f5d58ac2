#include "usage/history/ReadPlan.h"

#include "usage/lines/ByteSource.h"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_map>

namespace usage {

namespace {

/// Whether a file holds what was read of a known one, of which it may be a later state.
bool continues(const FoundFile &found, const KnownFile &known)
{
    ByteSource source;
    return found.identity.size >= known.mark.place && known.mark.place > 0
        && !source.open(found.path) && source.guardBefore(known.mark.place) == known.mark.guard;
}

/// Compares the files one by one.
class Planning final {
public:
    Planning(const std::vector<KnownFile> &known, TimePoint now);

    [[nodiscard]] ReadPlan plan(const std::vector<FoundFiles> &found);

private:
    using Inode = std::pair<std::uint64_t, std::uint64_t>;

    void take(const FoundFile &found, Provider provider);
    void compare(const FoundFile &found, const KnownFile &known);
    void takeUnknownPath(const FoundFile &found, Provider provider);
    void addGone(const std::vector<FoundFiles> &found);
    void addVersions();

    const std::vector<KnownFile> &m_known;
    TimePoint m_now;
    std::unordered_map<std::string_view, const KnownFile *> m_byPath;
    std::map<Inode, std::vector<const KnownFile *>> m_byInode;
    std::set<const KnownFile *> m_met;
    std::vector<std::pair<const FoundFile *, Provider>> m_unknown; // by their path
    ReadPlan m_plan;
};

Planning::Planning(const std::vector<KnownFile> &known, TimePoint now)
    : m_known(known)
    , m_now(now)
{
    m_byPath.reserve(known.size());
    for (const KnownFile &file : known) {
        const KnownFile *&held = m_byPath[file.path];
        // Of files that once had one path, that which is there, or else was there last.
        if (held == nullptr || held->isGone) {
            held = &file;
        }
    }
}

ReadPlan Planning::plan(const std::vector<FoundFiles> &found)
{
    for (const FoundFiles &each : found) {
        for (const FoundFile &file : each.files) {
            take(file, each.provider);
        }
    }
    if (!m_unknown.empty()) {
        for (const KnownFile &file : m_known) {
            if (!m_met.contains(&file)) {
                m_byInode[{file.mark.identity.device, file.mark.identity.inode}].push_back(&file);
            }
        }
    }
    for (const auto &[file, provider] : m_unknown) {
        takeUnknownPath(*file, provider);
    }
    addGone(found);
    addVersions();
    std::ranges::stable_sort(m_plan.files, std::greater {},
        [](const PlannedFile &file) { return file.found.identity.size; });
    return std::move(m_plan);
}

void Planning::take(const FoundFile &found, Provider provider)
{
    const auto known = m_byPath.find(found.path);
    const bool isKnown = known != m_byPath.end() && known->second->provider == provider;
    // What came back with other content is another file: that which went stays counted.
    if (isKnown
        && (!known->second->isGone || known->second->mark.identity == found.identity
            || continues(found, *known->second))) {
        m_met.insert(known->second);
        compare(found, *known->second);
    } else {
        m_unknown.emplace_back(&found, provider);
    }
}

void Planning::compare(const FoundFile &found, const KnownFile &known)
{
    const FileIdentity &before = known.mark.identity;
    const bool isDue = known.again && *known.again <= m_now;
    if (found.identity == before && !isDue) {
        if (known.isGone) {
            m_plan.back.push_back(&known);
        }
        return;
    }
    if (!isDue && found.identity.size == before.size && found.identity.modified == before.modified
        && continues(found, known)) {
        m_plan.same.emplace_back(&known, found.identity);
        return;
    }
    // Whoever writes without adding has changed what was there.
    const bool isRewritten = found.identity.size == before.size;
    const bool isSame = found.identity == before || (!isRewritten && continues(found, known));
    m_plan.files.push_back({.found = found,
        .provider = known.provider,
        .known = &known,
        .isFromStart = isDue || isRewritten,
        .isSame = isDue && isSame});
}

/// A file may have been moved; but numbers of files are used again, so that only its content tells.
void Planning::takeUnknownPath(const FoundFile &found, Provider provider)
{
    const auto candidates = m_byInode.find({found.identity.device, found.identity.inode});
    if (candidates != m_byInode.end()) {
        for (const KnownFile *known : candidates->second) {
            if (known->provider == provider && !m_met.contains(known) && continues(found, *known)) {
                m_met.insert(known);
                m_plan.moved.emplace_back(known, found.path);
                compare(found, *known);
                return;
            }
        }
    }
    m_plan.files.push_back({.found = found, .provider = provider, .isFromStart = true});
}

/// Only of folders that were looked at is it known what is no longer in them.
void Planning::addGone(const std::vector<FoundFiles> &found)
{
    for (const KnownFile &file : m_known) {
        if (file.isGone || m_met.contains(&file)) {
            continue;
        }
        const bool wasLookedFor = std::ranges::any_of(found, [&file](const FoundFiles &each) {
            return each.provider == file.provider
                && std::ranges::any_of(each.folders, [&file](const std::string &folder) {
                       return file.path.starts_with(folder) && file.path[folder.size()] == '/';
                   });
        });
        if (wasLookedFor) {
            m_plan.gone.push_back(&file);
        }
    }
}

/// Of Codex's files, which are kept whole.
void Planning::addVersions()
{
    std::unordered_multimap<std::string_view, const KnownFile *> gone;
    for (const KnownFile &file : m_known) {
        if (file.isGone && file.provider == Provider::Codex && !m_met.contains(&file)) {
            gone.emplace(file.path, &file);
        }
    }
    for (PlannedFile &file : m_plan.files) {
        const auto [begin, end] = gone.equal_range(file.found.path);
        std::transform(begin, end, std::back_inserter(file.gone),
            [](const auto &each) { return each.second; });
    }
}

} // namespace

ReadPlan planReading(
    const std::vector<KnownFile> &known, const std::vector<FoundFiles> &found, TimePoint now)
{
    return Planning(known, now).plan(found);
}

} // namespace usage
