#pragma once

#include "core/TimePoint.h"
#include "sources/SessionItem.h"
#include <memory>
#include <QAbstractListModel>

class Strings;

/// The sessions of one provider as rows of ready texts, formatted only when a row is looked at.
class SessionListModel final : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role { Title = Qt::UserRole, Detail, Cost, Tokens, Spoken };
    Q_ENUM(Role)

    explicit SessionListModel(QObject *parent);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /// Shows these sessions; rows that stay the same are left alone.
    void setSessions(const QList<SessionItem> &sessions);
    /// Writes every row anew in this language, as seen from this moment.
    void setLook(std::shared_ptr<const Strings> strings, TimePoint now);

private:
    void insertNewest(const QList<SessionItem> &sessions);
    [[nodiscard]] QString detail(const SessionItem &session) const;
    /// The whole row in words, for a screen reader.
    [[nodiscard]] QString spoken(const SessionItem &session) const;

    QList<SessionItem> m_sessions;
    std::shared_ptr<const Strings> m_strings;
    TimePoint m_now {};
};
