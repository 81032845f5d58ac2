#pragma once

#include "formats/TimePoint.h"
#include "widget/sources/SessionItem.h"
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

    /// Shows those sessions that are of a provider; rows that stay the same are left alone.
    void setSessions(const QList<SessionItem> &sessions, const QString &provider);
    /// Writes every row anew in this language, as seen from this moment.
    void setLook(std::shared_ptr<const Strings> strings, TimePoint now);

private:
    /// Some sessions of a list, by their places there: thousands of rows are not copied.
    struct Shown {
        QList<SessionItem> sessions;
        QList<int> places;

        [[nodiscard]] qsizetype size() const { return places.size(); }
        [[nodiscard]] const SessionItem &at(qsizetype row) const
        {
            return sessions.at(places.at(row));
        }
    };

    [[nodiscard]] static Shown shownOf(const QList<SessionItem> &sessions, const QString &provider);
    [[nodiscard]] static qsizetype newestCount(const Shown &before, const Shown &after);
    void grow(const Shown &list, qsizetype first, qsizetype count);
    [[nodiscard]] QString detail(const SessionItem &session) const;
    /// The whole row in words, for a screen reader.
    [[nodiscard]] QString spoken(const SessionItem &session) const;

    Shown m_shown;
    std::shared_ptr<const Strings> m_strings;
    TimePoint m_now {};
};
