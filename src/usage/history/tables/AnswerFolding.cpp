#include "usage/history/tables/AnswerFolding.h"

#include "usage/history/tables/AnswerTable.h"
#include "usage/history/tables/StoredTexts.h"

namespace usage {

void foldAnswers(Database &database)
{
    constexpr std::size_t many = 10'000;
    const StoredTexts names(database);
    AnswerTable answers(database, names.names());
    std::vector<FileAnswer> waiting;
    Statement rows(database,
        "SELECT message, request, file, told, max(1, coalesce(rules, 1)) FROM answer_by_file"
        " LEFT JOIN file ON file.id = file ORDER BY message, request, file");
    std::int64_t rules = 1;
    while (rows.next()) {
        const AnswerKey key {rows.bits(0), rows.bits(1)};
        if (waiting.size() == many || rows.number(4) != rules) {
            answers.put(waiting, rules);
            waiting.clear();
        }
        rules = rows.number(4);
        if (const auto record =
                unpackAnswer(rows.bytes(3), AnswerTable::seal(key, rows.number(2)))) {
            waiting.push_back({key, *record});
        } else {
            database.setDamaged();
        }
    }
    answers.put(waiting, rules);
}

} // namespace usage
