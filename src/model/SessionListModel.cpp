#include "model/SessionListModel.h"

#include "core/Dates.h"
#include "text/Strings.h"
#include <algorithm>

namespace {

/// Whether two rows look the same: all but the position in the file, which every new session
/// shifts.
bool sameRow(const SessionItem &a, const SessionItem &b)
{
    SessionItem moved = a;
    moved.id = b.id;
    return moved == b;
}

/// Keeps a name's own writing direction from turning round what stands beside it.
QString isolated(const QString &name)
{
    return QChar(0x2068) % name % QChar(0x2069);
}

} // namespace

SessionListModel::SessionListModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

int SessionListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_sessions.size());
}

QVariant SessionListModel::data(const QModelIndex &index, int role) const
{
    if (!m_strings || !checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const SessionItem &session = m_sessions.at(index.row());
    switch (role) {
    case Title:
        return session.title.isEmpty() ? QStringLiteral("—") : session.title;
    case Detail:
        return detail(session);
    case Cost:
        return m_strings->money(session.cost);
    case Tokens:
        return Strings::tokens(session.spent);
    default:
        return {};
    }
}

QHash<int, QByteArray> SessionListModel::roleNames() const
{
    return {{Title, "title"}, {Detail, "detail"}, {Cost, "cost"}, {Tokens, "tokens"}};
}

void SessionListModel::setSessions(const QList<SessionItem> &sessions)
{
    // New sessions come at the top and old ones leave at the end, so what changes is one stretch.
    const auto [oldHead, newHead] = std::ranges::mismatch(m_sessions, sessions, sameRow);
    const qsizetype head =
        std::distance(m_sessions.cbegin(), QList<SessionItem>::const_iterator(oldHead));
    const qsizetype most = std::min(m_sessions.size(), sessions.size()) - head;
    qsizetype tail = 0;
    while (tail < most
        && sameRow(
            m_sessions.at(m_sessions.size() - 1 - tail), sessions.at(sessions.size() - 1 - tail))) {
        ++tail;
    }
    const auto first = static_cast<int>(head);
    const auto removed = static_cast<int>(m_sessions.size() - head - tail);
    const auto inserted = static_cast<int>(sessions.size() - head - tail);
    if (removed > 0) {
        beginRemoveRows({}, first, first + removed - 1);
        m_sessions.remove(first, removed);
        endRemoveRows();
    }
    if (inserted > 0) {
        beginInsertRows({}, first, first + inserted - 1);
        m_sessions = sessions;
        endInsertRows();
    }
    m_sessions = sessions;
}

void SessionListModel::setLook(std::shared_ptr<const Strings> strings, TimePoint now)
{
    m_strings = std::move(strings);
    m_now = now;
    if (!m_sessions.isEmpty()) {
        Q_EMIT dataChanged(index(0), index(rowCount() - 1));
    }
}

QString SessionListModel::detail(const SessionItem &session) const
{
    QStringList parts;
    if (!session.project.isEmpty()) {
        parts << isolated(session.project);
    }
    if (session.end) {
        parts << when(*session.end);
    }
    if (!session.device.isEmpty()) {
        parts << isolated(session.device);
    }
    return parts.join(QStringLiteral(" · "));
}

QString SessionListModel::when(TimePoint end) const
{
    constexpr qint64 daysOfAWeek = 7;
    const qint64 days = Dates::daysAgo(end, m_now);
    const auto titled = [this, end](const char *key, const char *defaultText) {
        QString text = m_strings->text(QLatin1String(key), QLatin1String(defaultText));
        return text.replace(QStringLiteral("{0}"), m_strings->time(end));
    };
    if (days == 0) {
        return titled("sessionToday", "today {0}");
    }
    if (days == 1) {
        return titled("sessionYesterday", "yesterday {0}");
    }
    const bool thisWeek = days > 1 && days < daysOfAWeek;
    const QString key = thisWeek ? QStringLiteral("weekdayTime") : QStringLiteral("dayTime");
    return m_strings->date(end, key, MonthForm::InPhrase);
}

#include "moc_SessionListModel.cpp"
