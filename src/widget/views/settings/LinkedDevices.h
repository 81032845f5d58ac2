#pragma once

#include <QAbstractListModel>

class SyncSettings;
class WidgetModel;

/// The linked devices as rows of ready texts.
class LinkedDevices final : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role {
        DeviceId = Qt::UserRole, ///< QString
        Title,                   ///< QString, its name, its ID where it has none
        Detail,                  ///< QString: system, when it was seen, what it has cost
        Included                 ///< bool: its history counts in the totals
    };
    Q_ENUM(Role)

    LinkedDevices(const WidgetModel &model, const SyncSettings &sync, QObject *parent);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    struct Row {
        QString id;
        QString title;
        QString detail;
        bool included = true;
    };

    void refresh();
    void replaceMiddle(QList<Row> now);
    [[nodiscard]] QList<Row> rows() const;
    [[nodiscard]] QString seen(const QString &when) const;

    const WidgetModel &m_model;
    const SyncSettings &m_sync;
    QList<Row> m_rows;
};
