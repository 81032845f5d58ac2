#pragma once

#include "usage/history/tables/Database.h"

#include <optional>
#include <string>

namespace usage {

/// Gives a database the tables of the history, step by step from whatever version they are of. Says
/// why it cannot be used, if so; a newer version's is left as it is.
[[nodiscard]] std::optional<std::string> bringSchemaUpToDate(Database &database);

/// Whether it is of this version already.
[[nodiscard]] bool isSchemaUpToDate(Database &database);
/// What is wrong with the tables of a history that is there; empty when nothing is.
[[nodiscard]] std::string schemaProblem(Database &database);

} // namespace usage
