#include "usage/values/Answer.h"

#include "usage/values/PlausibleTime.h"

#include <array>
#include <tuple>

namespace usage {

namespace {

/// The largest count that is ever taken from a transcript.
constexpr std::uint64_t mostTokens = std::uint64_t {1} << 53U;
constexpr TimePoint latestTime =
    std::chrono::sys_days {std::chrono::year {2200} / std::chrono::January / 1};

bool isPossibleTime(TimePoint time)
{
    return time >= earliestTime && time < latestTime;
}

/// What is told goes before what is not, whatever the lines weigh: the placeholders that some
/// proxies write first do not even name the model. Between lines of one weight the name decides, so
/// that their order never does.
bool precedes(const Told &a, const Told &b, const TextPool &names)
{
    const auto rank = [&names](const Told &told) {
        return std::make_tuple(told.text == 0, told.standing, names.text(told.text));
    };
    return rank(a) < rank(b);
}

constexpr std::array<std::uint64_t Usage::*, 6> counts {&Usage::input, &Usage::output,
    &Usage::cacheRead, &Usage::cacheCreation, &Usage::fiveMinutes, &Usage::oneHour};

// Where the flags stand in their number.
constexpr unsigned tierShift = 2;
constexpr unsigned endingShift = 4;
constexpr unsigned sidechainShift = 6;
constexpr std::uint64_t twoBits = 3;

std::uint64_t flagsOf(const Answer &record)
{
    return static_cast<std::uint64_t>(record.speed)
        | static_cast<std::uint64_t>(record.tier) << tierShift
        | static_cast<std::uint64_t>(record.ending) << endingShift
        | static_cast<std::uint64_t>(record.isSidechain) << sidechainShift;
}

/// Most often both stand in the same line.
void packTold(PackedWriter &writer, const Told &told, Standing standing)
{
    writer.number(told.text);
    if (told.text != 0) {
        writer.signedNumber(static_cast<std::int64_t>(told.standing.rank() - standing.rank()));
    }
}

Told unpackTold(PackedReader &reader, Standing standing)
{
    Told told;
    told.text = static_cast<TextId>(reader.number());
    if (told.text != 0) {
        told.standing =
            Standing::ofRank(standing.rank() + static_cast<std::uint64_t>(reader.signedNumber()));
    }
    return told;
}

} // namespace

void merge(Answer &record, const Answer &other, const TextPool &names)
{
    record.usage.raiseTo(other.usage);
    record.standing = std::min(record.standing, other.standing);
    for (const auto field : {&Answer::session, &Answer::model, &Answer::folder}) {
        if (precedes(other.*field, record.*field, names)) {
            record.*field = other.*field;
        }
    }
    record.speed = std::max(record.speed, other.speed);
    record.tier = std::max(record.tier, other.tier);
    record.ending = std::max(record.ending, other.ending);
    record.isSidechain = record.isSidechain || other.isSidechain;
}

void pack(PackedWriter &writer, const Answer &record, std::uint64_t place)
{
    writer.number(record.standing.rank());
    writer.number(flagsOf(record));
    packTold(writer, record.session, record.standing);
    packTold(writer, record.model, record.standing);
    for (const auto count : counts) {
        writer.number(record.usage.*count);
    }
    writer.seal(place);
}

std::optional<Answer> unpackAnswer(std::string_view bytes, std::uint64_t place)
{
    const auto whole = unsealed(bytes, place);
    PackedReader reader(whole.value_or(std::string_view {}));
    Answer record;
    record.standing = Standing::ofRank(reader.number());
    const std::uint64_t flags = reader.number();
    record.speed = static_cast<Speed>(flags & twoBits);
    record.tier = static_cast<ServiceTier>(flags >> tierShift & twoBits);
    record.ending = static_cast<Ending>(flags >> endingShift & twoBits);
    record.isSidechain = (flags >> sidechainShift & 1U) != 0;
    record.session = unpackTold(reader, record.standing);
    record.model = unpackTold(reader, record.standing);
    bool isPossible = isPossibleTime(record.time()) && flags == flagsOf(record)
        && record.speed <= Speed::Other && record.tier <= ServiceTier::Other
        && record.ending <= Ending::Finished;
    for (const auto count : counts) {
        record.usage.*count = reader.number();
        isPossible = isPossible && record.usage.*count <= mostTokens;
    }
    return isPossible && reader.isSound() && reader.isAtEnd() ? std::optional(record)
                                                              : std::nullopt;
}

} // namespace usage
