#include "usage/history/tables/FileTable.h"

#include "usage/history/tables/SealedTables.h"

#include <fmt/format.h>

namespace usage {

namespace {

std::int64_t stamp(std::optional<TimePoint> time)
{
    return time ? time->time_since_epoch().count() : 0;
}

std::optional<TimePoint> timeOfStamp(std::int64_t stamp)
{
    return stamp == 0 ? std::nullopt : std::optional(TimePoint(TimePoint::duration(stamp)));
}

} // namespace

FileTable::FileTable(Database &database)
    : m_database(database)
    , m_before(database, "SELECT skips, again FROM file WHERE id = ?")
    , m_mark(database,
          "UPDATE file SET device = ?, inode = ?, size = ?, modified = ?, place = ?, guard = ?,"
          " again = ?, gone = 0, rules = ?, skips = ? WHERE id = ?")
    , m_seal(database, resealing(fileTable, "id = ?"))
{
}

std::vector<KnownFile> FileTable::all() const
{
    std::vector<KnownFile> files;
    checkStructure(m_database, fileTable.name);
    Statement rows(
        m_database, fmt::format("SELECT {}, {} FROM file", isSealed(fileTable), fileTable.columns));
    while (rows.next()) {
        KnownFile &file = files.emplace_back();
        int column = 0;
        if (rows.number(column++) == 0) {
            m_database.setDamaged();
        }
        file.id = rows.number(column++);
        file.provider = static_cast<Provider>(rows.number(column++));
        file.path = rows.bytes(column++);
        file.mark.identity.device = rows.bits(column++);
        file.mark.identity.inode = rows.bits(column++);
        file.mark.identity.size = rows.bits(column++);
        file.mark.identity.modified = rows.number(column++);
        file.mark.place = rows.bits(column++);
        file.mark.guard = rows.bits(column++);
        file.again = timeOfStamp(rows.number(column++));
        file.isGone = rows.number(column++) != 0;
        if (rows.number(column++) != readingRules) {
            file.again = TimePoint {};
        }
    }
    return files;
}

Skips FileTable::skips(Database &database)
{
    Skips all;
    Statement rows(database, "SELECT skips FROM file WHERE skips <> x''");
    while (rows.next()) {
        all.add(Skips::unpacked(rows.bytes(0)));
    }
    return all;
}

std::int64_t FileTable::add(Provider provider, const std::string &path)
{
    Statement insertion(m_database,
        "INSERT INTO file (provider, path, device, inode, size, modified, place, guard, again,"
        " gone, rules, skips, seal) VALUES (?, ?, 0, 0, 0, 0, 0, 0, 0, 0, 0, x'', 0)"
        " RETURNING id");
    insertion.bind(static_cast<int>(provider), std::string_view(path));
    std::int64_t id = 0;
    while (insertion.next()) {
        id = insertion.number(0);
    }
    seal(id);
    return id;
}

void FileTable::mark(const FilePiece &piece)
{
    Skips skips = piece.skips;
    std::optional<TimePoint> again = piece.again;
    if (!piece.isFresh) {
        m_before.bind(piece.file);
        while (m_before.next()) {
            skips.add(Skips::unpacked(m_before.bytes(0)));
            const auto before = timeOfStamp(m_before.number(1));
            again = before && again ? std::min(before, again) : before ? before : again;
        }
    }
    const std::string left = skips.isEmpty() ? std::string() : skips.packed();
    const FileIdentity &identity = piece.mark.identity;
    m_mark.bind(identity.device, identity.inode, identity.size, identity.modified, piece.mark.place,
        piece.mark.guard, stamp(again), readingRules, std::string_view(left), piece.file);
    m_mark.run();
    seal(piece.file);
}

void FileTable::move(std::int64_t id, const std::string &path)
{
    Statement update(m_database, "UPDATE file SET path = ?, gone = 0 WHERE id = ?");
    update.bind(std::string_view(path), id).run();
    seal(id);
}

void FileTable::setGone(std::int64_t id, bool isGone)
{
    Statement update(m_database, "UPDATE file SET gone = ? WHERE id = ?");
    update.bind(static_cast<int>(isGone), id).run();
    seal(id);
}

/// What was left out of it is for the new version to tell.
void FileTable::setAside(std::int64_t id)
{
    Statement update(m_database, "UPDATE file SET gone = 1, skips = x'' WHERE id = ?");
    update.bind(id).run();
    seal(id);
}

void FileTable::remove(std::int64_t id)
{
    Statement removal(m_database, "DELETE FROM file WHERE id = ?");
    removal.bind(id).run();
}

void FileTable::setIdentity(std::int64_t id, const FileIdentity &identity)
{
    Statement update(m_database,
        "UPDATE file SET device = ?, inode = ?, size = ?, modified = ?, gone = 0 WHERE id = ?");
    update.bind(identity.device, identity.inode, identity.size, identity.modified, id).run();
    seal(id);
}

/// After each change of a row.
void FileTable::seal(std::int64_t id)
{
    m_seal.bind(id).run();
}

} // namespace usage
