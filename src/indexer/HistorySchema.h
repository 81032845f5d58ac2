#pragma once

#include "indexer/Database.h"

#include <optional>
#include <string>

namespace indexer {

/// Gives a database the tables of the history, step by step from whatever version they are of. Says
/// why it cannot be used, if so; a newer version's is left as it is.
[[nodiscard]] std::optional<std::string> bringSchemaUpToDate(Database &database);

} // namespace indexer
