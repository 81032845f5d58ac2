#include "usage/history/tables/SpentTable.h"

namespace usage {

namespace {

std::int64_t numberOf(Day day)
{
    return day.time_since_epoch().count();
}

std::uint64_t placeOf(const SumKey &key)
{
    return sealPlace({static_cast<std::uint64_t>(key.provider), key.session,
        static_cast<std::uint64_t>(numberOf(key.day)), key.model});
}

constexpr const char *selection = "SELECT provider, session, day, model, told FROM spent";

SumKey keyOf(const Statement &row)
{
    return {static_cast<Provider>(row.number(0)), static_cast<TextId>(row.number(1)),
        Day(std::chrono::days(static_cast<int>(row.number(2)))),
        static_cast<TextId>(row.number(3))};
}

} // namespace

SpentTable::SpentTable(Database &database)
    : m_database(database)
{
}

bool SpentTable::isSound(Database &database)
{
    Statement rows(database, selection);
    while (rows.next()) {
        if (!unpackSum(rows.bytes(4), placeOf(keyOf(rows)))) {
            return false;
        }
    }
    return true;
}

void SpentTable::visitAll(const Visit &visit) const
{
    Statement rows(m_database, selection);
    while (rows.next()) {
        const SumKey key = keyOf(rows);
        if (const auto sum = unpackSum(rows.bytes(4), placeOf(key))) {
            visit(key, *sum);
        } else {
            m_database.setDamaged();
        }
    }
}

bool SpentTable::change(const std::map<SumKey, Sum> &differences)
{
    constexpr const char *place = " WHERE provider = ? AND session = ? AND day = ? AND model = ?";
    Statement held(m_database, std::string("SELECT told FROM spent") + place);
    Statement removal(m_database, std::string("DELETE FROM spent") + place);
    Statement replacement(m_database,
        "INSERT OR REPLACE INTO spent (provider, session, day, model, told)"
        " VALUES (?, ?, ?, ?, ?)");
    bool isSound = true;
    for (const auto &[key, difference] : differences) {
        if (difference == Sum {}) {
            continue;
        }
        const int provider = static_cast<int>(key.provider);
        const std::int64_t day = numberOf(key.day);
        Sum sum = difference;
        held.bind(provider, key.session, day, key.model);
        while (held.next()) {
            const auto before = unpackSum(held.bytes(0), placeOf(key));
            isSound = isSound && before;
            sum += before.value_or(Sum {});
        }
        if (sum == Sum {}) {
            removal.bind(provider, key.session, day, key.model).run();
            continue;
        }
        isSound = isSound && sum.isPossible();
        PackedWriter writer;
        pack(writer, sum, placeOf(key));
        replacement.bind(provider, key.session, day, key.model, std::string_view(writer.bytes()));
        replacement.run();
    }
    return isSound;
}

void SpentTable::clear()
{
    m_database.run("DELETE FROM spent");
}

} // namespace usage
