#include "ShownLimits.h"

#include "formats/Limits.h"
#include "widget/model/Freshness.h"
#include "widget/model/LimitRow.h"
#include "widget/model/windowLabel.h"
#include "WidgetTarget.h"

namespace {

using Window = std::optional<Reading>;

bool isShare(double part)
{
    return part >= 0 && part <= 1;
}

void lookAt(const Window &window, Seconds length)
{
    require(!window || (std::isfinite(window->percent) && isSane(window->resetsAt)));
    const RowState state = rowState(window, length, now, strings());
    require(isShare(state.fill) && isShare(state.pace.value_or(0)) && isSane(state.value));
    const LimitRow row = limitRow(windowLabel(length, strings()), state);
    require(isShare(row.fill) && isShare(row.pace) && std::isfinite(row.value));
    require(!row.label.isEmpty() && !row.percent.isEmpty());
    require(row.note.isEmpty() == (window && !window->resetsAt));
    require(row.percent.endsWith(u'%') == window.has_value());
}

} // namespace

void lookAt(const Limits &limits, Seconds shorter, Seconds longer)
{
    require(isSane(limits.updatedAt) && isSane(limits.accountAt));
    lookAt(limits.fiveHour, shorter);
    lookAt(limits.sevenDay, longer);
    const Freshness age = freshness(limits, now, strings());
    require(age.text.isEmpty() == !limits.updatedAt.has_value());

    Limits mixed = limits;
    mixed.accountAt.reset();
    require(Limits::merge(limits, limits) == mixed);
    require(Limits::merge(limits, {}) == limits && Limits::merge({}, limits) == limits);
    // Whatever the other source tells, a window is one of the two.
    const Limits other {now, Reading {50, now + std::chrono::hours(1)}, Reading {50, {}}, {}};
    for (const auto &merged : {Limits::merge(limits, other), Limits::merge(other, limits)}) {
        require(merged && merged->updatedAt >= other.updatedAt);
        const auto isEither = [&](Window Limits::*window) {
            return *merged.*window == limits.*window || *merged.*window == other.*window;
        };
        require(isEither(&Limits::fiveHour) && isEither(&Limits::sevenDay));
    }
}
