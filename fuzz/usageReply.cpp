// What the account's endpoint answers.

#include "formats/Limit.h"
#include "ShownLimits.h"
#include "widget/sources/AccountUsage.h"
#include "widget/sources/HttpGet.h"
#include "WidgetTarget.h"

using namespace AccountUsage;

void tryInput(const QByteArray &bytes)
{
    constexpr int ok = 200;
    const AccountOutcome outcome = outcomeOf(HttpReply {ok, bytes}, now);
    const auto *const limits = std::get_if<Limits>(&outcome);
    require(limits || std::holds_alternative<Malformed>(outcome));
    if (limits) {
        require(limits->updatedAt == now && (limits->fiveHour || limits->sevenDay));
        lookAt(*limits, Limit::fiveHours, Limit::week);
    }
}
