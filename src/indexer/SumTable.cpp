#include "indexer/SumTable.h"

namespace indexer {

namespace {

constexpr std::int64_t dollar = 1'000'000'000'000; // in picodollars

std::int64_t numberOf(Day day)
{
    return day.time_since_epoch().count();
}

/// Reads what stands in a row from a column on.
Sum readSum(const Statement &row, int column)
{
    Sum sum;
    for (const auto count : {&Sum::answers, &Sum::used, &Sum::unpriced, &Sum::estimated,
             &Sum::input, &Sum::output, &Sum::cacheWrite, &Sum::cacheRead}) {
        sum.*count = row.bits(column++);
    }
    sum.picodollars = Money::Amount {row.number(column)} * dollar;
    sum.picodollars += row.number(column + 1);
    return sum;
}

} // namespace

SumTable::SumTable(Database &database)
    : m_database(database)
{
}

void SumTable::visitAll(const Visit &visit) const
{
    Statement rows(m_database,
        "SELECT provider, session, day, model, answers, used, unpriced, estimated, input, output,"
        " cache_write, cache_read, dollars, picodollars FROM spent");
    constexpr int firstOfSum = 4;
    while (rows.next()) {
        visit({static_cast<Provider>(rows.number(0)), static_cast<TextId>(rows.number(1)),
                  Day(std::chrono::days(static_cast<int>(rows.number(2)))),
                  static_cast<TextId>(rows.number(3))},
            readSum(rows, firstOfSum));
    }
}

bool SumTable::change(const std::map<SumKey, Sum> &differences)
{
    Statement held(m_database,
        "SELECT answers, used, unpriced, estimated, input, output, cache_write, cache_read,"
        " dollars, picodollars FROM spent"
        " WHERE provider = ? AND session = ? AND day = ? AND model = ?");
    Statement removal(m_database,
        "DELETE FROM spent WHERE provider = ? AND session = ? AND day = ? AND model = ?");
    Statement replacement(m_database,
        "INSERT OR REPLACE INTO spent (provider, session, day, model, answers, used, unpriced,"
        " estimated, input, output, cache_write, cache_read, dollars, picodollars)"
        " VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
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
            sum += readSum(held, 0);
        }
        if (sum == Sum {}) {
            removal.bind(provider, key.session, day, key.model).run();
            continue;
        }
        isSound = isSound && sum.isPossible();
        replacement.bind(provider, key.session, day, key.model, sum.answers, sum.used, sum.unpriced,
            sum.estimated, sum.input, sum.output, sum.cacheWrite, sum.cacheRead,
            static_cast<std::int64_t>(sum.picodollars / dollar),
            static_cast<std::int64_t>(sum.picodollars % dollar));
        replacement.run();
    }
    return isSound;
}

void SumTable::clear()
{
    m_database.run("DELETE FROM spent");
}

} // namespace indexer
