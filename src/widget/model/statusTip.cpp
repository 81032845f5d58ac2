#include "widget/model/statusTip.h"

#include "widget/model/wholeNumber.h"
#include "widget/model/WidgetModel.h"
#include <cmath>

QString statusTip(const WidgetModel &model)
{
    QStringList parts;
    const auto add = [&](const std::optional<Reading> &reading, Seconds length) {
        // As the limits card has it, which knows of a window that has begun anew.
        if (const std::optional<double> used = model.rowState(reading, length).value) {
            parts << model.windowLabel(length) % u' ' % wholeNumber(std::round(*used)) % u'%';
        }
    };
    const Limits limits = model.shownLimits().value_or(Limits {});
    const auto [shorter, longer] = model.windowLengths();
    add(limits.fiveHour, shorter);
    add(limits.sevenDay, longer);
    if (parts.isEmpty()) {
        return model.t(QStringLiteral("trayEmpty"));
    }
    parts.prepend(displayName(model.provider()));
    return parts.join(QStringLiteral(" · "));
}
