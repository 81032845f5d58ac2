#include "widget/views/settings/LinkedDevices.h"

#include "widget/core/IsoParser.h"
#include "widget/model/dayAndTime.h"
#include "widget/model/WidgetModel.h"
#include "widget/scripts/SyncSettings.h"
#include "widget/text/Strings.h"
#include <algorithm>

namespace {

/// Systems as they write themselves; others stay as the device tells them.
QString systemName(const QString &os)
{
    if (os == u"linux") {
        return QStringLiteral("Linux");
    }
    if (os == u"darwin" || os == u"macos") {
        return QStringLiteral("macOS");
    }
    if (os == u"win32" || os == u"windows") {
        return QStringLiteral("Windows");
    }
    return os;
}

} // namespace

LinkedDevices::LinkedDevices(const WidgetModel &model, const SyncSettings &sync, QObject *parent)
    : QAbstractListModel(parent)
    , m_model(model)
    , m_sync(sync)
    , m_rows(rows())
{
    connect(&sync, &SyncSettings::statusChanged, this, &LinkedDevices::refresh);
    connect(&sync, &SyncSettings::deviceCostsChanged, this, &LinkedDevices::refresh);
    connect(&model, &WidgetModel::stringsChanged, this, &LinkedDevices::refresh);
    connect(&model, &WidgetModel::nowChanged, this, &LinkedDevices::refresh);
}

int LinkedDevices::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant LinkedDevices::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const Row &row = m_rows.at(index.row());
    switch (role) {
    case DeviceId:
        return row.id;
    case Title:
        return row.title;
    case Detail:
        return row.detail;
    case Included:
        return row.included;
    default:
        return {};
    }
}

QHash<int, QByteArray> LinkedDevices::roleNames() const
{
    return {{DeviceId, "deviceId"}, {Title, "title"}, {Detail, "detail"}, {Included, "included"}};
}

void LinkedDevices::refresh()
{
    QList<Row> now = rows();
    if (now.isEmpty() || m_rows.isEmpty()) {
        beginResetModel();
        m_rows = std::move(now);
        endResetModel();
        return;
    }
    replaceMiddle(std::move(now));
    Q_EMIT dataChanged(index(0), index(rowCount() - 1));
}

/// Rows of devices that stay are kept, and with them the keyboard and what is in sight; but those
/// between two changes are made anew.
void LinkedDevices::replaceMiddle(QList<Row> now)
{
    const auto isSame = [](const Row &a, const Row &b) { return a.id == b.id; };
    const auto head =
        std::mismatch(m_rows.cbegin(), m_rows.cend(), now.cbegin(), now.cend(), isSame);
    const auto tail = std::mismatch(m_rows.crbegin(), std::make_reverse_iterator(head.first),
        now.crbegin(), std::make_reverse_iterator(head.second), isSame);
    const auto first = static_cast<int>(head.first - m_rows.cbegin());
    const auto gone = static_cast<int>(tail.first.base() - head.first);
    const auto come = static_cast<int>(tail.second.base() - head.second);
    if (gone > 0) {
        beginRemoveRows({}, first, first + gone - 1);
        m_rows.remove(first, gone);
        endRemoveRows();
    }
    if (come > 0) {
        beginInsertRows({}, first, first + come - 1);
        m_rows = std::move(now);
        endInsertRows();
    } else {
        m_rows = std::move(now);
    }
}

QList<LinkedDevices::Row> LinkedDevices::rows() const
{
    const QList<DeviceRow> costs = m_sync.deviceCosts();
    QList<Row> rows;
    for (const SyncLink &link : m_sync.status().links.value_or(QList<SyncLink>())) {
        QStringList detail {systemName(link.os.value_or(QString()).simplified()),
            seen(link.seenAt.value_or(QString()).simplified())};
        const auto device = std::ranges::find(costs, link.id, &DeviceRow::id);
        if (device != costs.end() && device->cost) {
            detail << m_model.strings()->money(*device->cost);
        }
        detail.removeAll(QString());
        const QString name = link.name.value_or(QString()).simplified();
        rows.append({.id = link.id,
            .title = name.isEmpty() ? link.id : name,
            .detail = detail.join(QStringLiteral(" · ")),
            .included = link.enabled.value_or(true)});
    }
    return rows;
}

QString LinkedDevices::seen(const QString &when) const
{
    if (when.isEmpty()) {
        return {};
    }
    const std::optional<TimePoint> moment = isoParser()(QStringView(when));
    const QString text = m_model.label(QStringLiteral("syncSeen"), QStringLiteral("seen {0}"));
    return QString(text).replace(QStringLiteral("{0}"),
        moment ? dayAndTime(*m_model.strings(), *moment, m_model.now()) : when);
}

#include "moc_LinkedDevices.cpp"
