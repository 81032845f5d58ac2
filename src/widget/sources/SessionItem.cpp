#include "widget/sources/SessionItem.h"

#include "widget/core/IsoParser.h"
#include "widget/sources/Provider.h"
#include <QHash>

namespace {

/// Display names by device id. Of two rows with one id the first counts.
QHash<QString, QString> deviceLabels(const Stats &stats)
{
    QHash<QString, QString> labels;
    for (const DeviceRow &device : stats.devices.value_or(QList<DeviceRow>())) {
        const QString name = device.name.value_or(QString());
        if (!labels.contains(device.id)) {
            labels.insert(device.id, name.isEmpty() ? device.id : name);
        }
    }
    return labels;
}

} // namespace

QList<SessionItem> sessionItems(const Stats &stats)
{
    const QHash<QString, QString> labels = deviceLabels(stats);
    const IsoParser parse = isoParser();
    const QList<SessionRow> rows = stats.sessions.value_or(QList<SessionRow>());

    QList<SessionItem> items;
    items.reserve(rows.size());
    for (const SessionRow &row : rows) {
        items.append(SessionItem {
            .id = items.size(),
            .title = row.title.value_or(QString()),
            .project = row.project.value_or(QString()),
            .end = row.end ? parse(QStringView(*row.end)) : std::nullopt,
            .cost = row.cost.value_or(0),
            .spent = row.tokens ? row.tokens->spent() : 0,
            .provider = row.provider.value_or(rawValue(Provider::Claude)),
            .device = row.device ? labels.value(*row.device) : QString(),
        });
    }
    return items;
}
