#pragma once

#include "usage/history/tables/Database.h"
#include "usage/values/TextPool.h"

namespace usage {

/// The texts of the history with the numbers that its rows know them by, which leave none out.
class StoredTexts final {
public:
    explicit StoredTexts(Database &database);

    [[nodiscard]] TextPool &names() { return m_names; }
    [[nodiscard]] const TextPool &names() const { return m_names; }

    /// Writes those that are new.
    void save();

private:
    Database &m_database;
    TextPool m_names;
    std::size_t m_saved = 1; // number 0 is the empty text, which needs no row
};

} // namespace usage
