#pragma once

#include "usage/history/tables/Database.h"
#include "usage/pricing/Sums.h"

#include <functional>

namespace usage {

/// The sums that the history keeps, so that nobody has to go through all answers again.
class SpentTable final {
public:
    using Visit = std::function<void(const SumKey &, const Sum &)>;

    explicit SpentTable(Database &database);

    /// Whether all of them are as they were written.
    [[nodiscard]] static bool isSound(Database &database);

    void visitAll(const Visit &visit) const;

    /// Adds differences to what is there; false when that is not what was written, or leaves less
    /// than nothing, so that all sums are to be made anew.
    [[nodiscard]] bool change(const std::map<SumKey, Sum> &differences);
    void clear();

private:
    Database &m_database;
};

} // namespace usage
