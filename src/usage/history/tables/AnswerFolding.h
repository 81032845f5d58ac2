#pragma once

#include "usage/history/tables/Database.h"

namespace usage {

/// Puts what `answer_by_file` tells of each answer, file by file, together to one row of `answer`.
void foldAnswers(Database &database);

} // namespace usage
