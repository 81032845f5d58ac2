#include "usage/claude/TranscriptParser.h"
#include "usage/lines/LineReader.h"

#include <gtest/gtest.h>

namespace {

using namespace usage;

/// Parses a line as it comes out of the reader: with room behind it.
class Parsing final {
public:
    LineOutcome operator()(const std::string &text)
    {
        m_padded = text + std::string(LineReader::padding, '\0');
        return m_parser.parse({m_padded.data(), text.size()}, line);
    }

    TranscriptLine line;

private:
    std::string m_padded;
    JsonLine m_json {LineReader::longestLine};
    TranscriptParser m_parser {m_json};
};

TEST(TranscriptParser, takesOnlySoundJsonOfKnownTypes)
{
    Parsing parse;
    const std::string front = R"({"type":"assistant","x":)";
    const auto nested = [](std::size_t depth) {
        return std::string(depth, '[') + std::string(depth, ']');
    };
    const std::string deep = nested(100);
    for (const std::string value :
        {"-0.5e+3", "1E400", "true", "null", R"([1, {"a" : [ ]} ,"x", {}])", R"("a\u00e9\n\ud83d")",
            "\" \xF0\x9F\x98\x80\"", deep.c_str()}) {
        EXPECT_EQ(parse(front + value + "} \t"), LineOutcome::Parsed) << value;
    }
    for (const std::string value : {"", "tru", "truee", "01", "1.", "-", "+1", ".5", "1e", "[1 2]",
             "[1,]", "[1}", "{\"a\"}", "{\"a\":1,}", "{a:1}", R"("\x")", R"("\u12g4")", R"("a)",
             "\"a\nb\"", "\"\xFF\"", "\"\xED\xA0\x80\"", "'a'", "1 2", "}", R"({"a\q":1})", "[",
             "NaN", R"("a":1)", R"(["a":1])", R"({"b":"a":1})", "1\x1f"}) {
        EXPECT_EQ(parse(front + value + '}'), LineOutcome::NotJson) << value;
    }
    EXPECT_EQ(parse(front + nested(1'000'000) + "}"), LineOutcome::NotJson);
    for (const std::string line : {"garbage", "{", "}", "[]", "1", "\"x\"", "{\"type\":\"user\"",
             "{\"type\":\"user\"}x", "{\"type\":\"user\"}{}", "{\"type\":\"user\" \"x\":1}",
             "{\"type\" \"user\"}", "\xEF\xBB\xBF{}"}) {
        EXPECT_EQ(parse(line), LineOutcome::NotJson) << line;
    }
    for (const std::string line : {"", "  \t", "{}", R"({"x":1,"type":"attachment"})",
             R"({"type":5})", R"({"message":{"usage":{"input_tokens":1}}})"}) {
        EXPECT_EQ(parse(line), LineOutcome::Ignored) << line;
    }
}

TEST(TranscriptParser, takesWrongTypesForAbsent)
{
    Parsing parse;
    const TranscriptLine &line = parse.line;
    parse(R"({"type":"assistant","sessionId":5,"timestamp":[],"cwd":null,)"
          R"("isSidechain":"true","isApiErrorMessage":1,"forkedFrom":null,)"
          R"("message":{"id":{},"model":7,"stop_reason":null,"usage":[1]}})");
    EXPECT_TRUE(line.sessionId.empty() && line.timestamp.empty() && line.cwd.empty());
    EXPECT_TRUE(line.messageId.empty() && line.model.empty());
    EXPECT_FALSE(line.isSidechain || line.isApiError || line.isForked);
    EXPECT_TRUE(line.ending == Ending::Open && !line.hasUsage);

    parse(R"({"type":"\u0061ssistant","message":{"id":"\u006d1","usage":{"input_tokens":"9",)"
          R"("output_tokens":null,"cache_creation":5,"service_tier":3}},"forkedFrom":{"a":1}})");
    EXPECT_EQ(line.messageId, "m1");
    EXPECT_TRUE(line.hasUsage && line.isForked);
    EXPECT_EQ(line.usage, Usage {.input = 9});
    EXPECT_FALSE(line.hasImpossibleNumbers);

    // Too long for an id: not kept.
    parse(R"({"type":"user","sessionId":")" + std::string(5000, 'x') + "\"}");
    EXPECT_TRUE(line.sessionId.empty());
}

TEST(TranscriptParser, takesOnlyCountsThatCanBe)
{
    Parsing parse;
    const auto count = [&](const std::string &number) -> std::optional<std::uint64_t> {
        parse(R"({"type":"assistant","message":{"usage":{"input_tokens":)" + number + "}}}");
        if (!parse.line.hasUsage || parse.line.hasImpossibleNumbers) {
            return std::nullopt;
        }
        return parse.line.usage.input;
    };
    EXPECT_EQ(count("7.0"), 7U);
    EXPECT_EQ(count("1.5e3"), 1500U);
    EXPECT_EQ(count("9007199254740992"), std::uint64_t {1} << 53U);
    for (const char *number :
        {"-1", "1.5", "9007199254740993", "9007199254740994", "9007199254740992.9",
            "18446744073709551616", "1e16", "1e999", "-1e999", "99999999999999999999999", "1e-3"}) {
        EXPECT_EQ(count(number), std::nullopt) << number;
    }
}

} // namespace
