#pragma once

#include "usage/history/History.h"
#include "usage/pricing/PriceFile.h"
#include "usage/Scratch.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace usage {

/// An answer of as many dollars.
inline std::string answer(const std::string &id, int dollars, const std::string &time = {})
{
    const std::string usage = fmt::format(R"("output_tokens":{})", dollars * 50'000);
    return AnswerLine {.id = id, .time = time.empty() ? AnswerLine {}.time : time, .usage = usage}
        .line();
}

/// A home and the history that is made of it, which is opened anew for each look.
class KeptHistory : public testing::Test {
protected:
    KeptHistory() { std::filesystem::create_directory(data); }

    nlohmann::json look(TimePoint now = testNow(), const PriceTable &prices = builtInPrices())
    {
        History history(data);
        nlohmann::json told;
        if (!history.problem()) {
            history.update({scratch.claude(), scratch.codex()}, prices, now, {},
                [&](const History &kept) { told = nlohmann::json::parse(statsText(kept)); });
        }
        problem = history.problem().value_or("");
        remark = history.remark();
        return problem.empty() ? told : nlohmann::json();
    }
    double cost(TimePoint now = testNow()) { return look(now)["totals"]["month"]["cost"]; }

    void change(const std::string &sql) const
    {
        Database database(file);
        database.run(sql);
        EXPECT_EQ(database.problem().value_or(""), "");
    }

    const Scratch scratch;
    const std::filesystem::path data = scratch.root() / "data";
    const std::filesystem::path file = data / History::fileName;
    std::string problem;
    std::string remark;
};

} // namespace usage
