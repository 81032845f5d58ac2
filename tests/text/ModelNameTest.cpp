#include "text/modelName.h"

#include <gtest/gtest.h>

namespace {

TEST(ModelName, isReadFromTheIdentifier)
{
    const struct {
        const char *id;
        const char *name;
    } rows[] = {
        {"claude-opus-4-1", "Opus 4.1"},
        {"claude-sonnet-4-5-20250929", "Sonnet 4.5.20250929"},
        {"claude-haiku", "Haiku"},
        {"claude-3-5-haiku", "3 5.haiku"},
        {"claude-OPUS--4-", "Opus 4"},
        {"claude-claude-2", "Claude 2"},
        {"gpt-5-codex", "GPT-5-codex"},
        {"gpt-", "GPT-"},
        {"GPT-5", "Gpt 5"},
        {"gpt5", "Gpt5"},
        {"o3", "o3"},
        {"o4-mini", "o4-mini"},
        {"o-series", "O series"},
        {"o", "O"},
        {"4opus", "4Opus"},
        {"two words-1", "Two Words 1"},
        {" claude-x", "Claude x"},
        {"émile-1", "Émile 1"},
        // Nothing to make a name of.
        {"claude-", "claude-"},
        {"--", "--"},
        {"", ""},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(modelName(QString::fromUtf8(row.id)).toStdString(), row.name) << row.id;
    }
}

} // namespace
