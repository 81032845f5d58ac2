#include "widget/model/Freshness.h"

#include "widget/model/wholeNumber.h"
#include "widget/text/Strings.h"
#include <chrono>

using namespace std::chrono_literals;

namespace {

QString ageText(Seconds age, const Strings &strings)
{
    // Whole units, cut off: what is 119 s old is 1 minute old.
    const auto in = [age, &strings](const char *key, Seconds unit) {
        return strings.t(QLatin1String(key), {wholeNumber(age / unit)});
    };
    if (age < 60s) {
        return strings.t(QStringLiteral("now"));
    }
    if (age < 1h) {
        return in("minAgo", 1min);
    }
    return age < 24h ? in("hAgo", 1h) : in("dAgo", 24h);
}

} // namespace

Freshness freshness(const std::optional<Limits> &shown, TimePoint now, const Strings &strings)
{
    if (!shown || !shown->updatedAt) {
        return {};
    }
    const Seconds age = elapsed(*shown->updatedAt, now); // negative where a clock is ahead
    Freshness made;
    made.text = ageText(age, strings);
    made.fresh = age < 15min;
    made.tip = strings.t(QStringLiteral("dotTip"), {strings.time(*shown->updatedAt)});
    return made;
}

#include "moc_Freshness.cpp"
