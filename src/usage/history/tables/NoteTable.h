#pragma once

#include "usage/history/tables/Database.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace usage {

/// When the last run was, in milliseconds since 1970.
constexpr std::string_view lastRunFact = "last run";

/// By what the sums were made, or that they no longer are what the answers are.
constexpr std::string_view sumsFact = "sums";
constexpr std::string_view outdatedSums = "outdated";

/// What tells that the files for others are as the history is; emptied with each of its changes.
constexpr std::string_view writtenFact = "written";

/// Single facts that the history keeps by name.
class NoteTable final {
public:
    explicit NoteTable(Database &database)
        : m_database(database)
    {
    }

    /// 0 for what was never told.
    [[nodiscard]] std::int64_t number(std::string_view name) const;
    /// Empty likewise.
    [[nodiscard]] std::string text(std::string_view name) const;

    void set(std::string_view name, std::int64_t value);
    void set(std::string_view name, std::string_view value);

private:
    Database &m_database;
};

} // namespace usage
