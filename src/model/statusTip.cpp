#include "model/statusTip.h"

#include "model/wholeNumber.h"
#include "model/WidgetModel.h"
#include <cmath>

QString statusTip(const WidgetModel &model)
{
    QStringList parts;
    const auto add = [&](const std::optional<Reading> &reading, Seconds length) {
        if (reading) {
            parts << model.windowLabel(length) % u' ' % wholeNumber(std::round(reading->percent))
                    % u'%';
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
