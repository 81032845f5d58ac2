#include "model/SessionListModel.h"

#include "model/dayAndTime.h"
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
    case Spoken:
        return spoken(session);
    default:
        return {};
    }
}

QHash<int, QByteArray> SessionListModel::roleNames() const
{
    return {{Title, "title"}, {Detail, "detail"}, {Cost, "cost"}, {Tokens, "tokens"},
        {Spoken, "spoken"}};
}

void SessionListModel::setSessions(const QList<SessionItem> &sessions)
{
    insertNewest(sessions);
    const auto common = static_cast<int>(std::min(m_sessions.size(), sessions.size()));
    for (int row = 0; row < common; ++row) {
        const bool same = sameRow(m_sessions.at(row), sessions.at(row));
        m_sessions[row] = sessions.at(row);
        if (!same) {
            Q_EMIT dataChanged(index(row), index(row));
        }
    }
    if (m_sessions.size() > common) {
        beginRemoveRows({}, common, rowCount() - 1);
        m_sessions.resize(common);
        endRemoveRows();
    } else if (sessions.size() > common) {
        beginInsertRows({}, common, static_cast<int>(sessions.size()) - 1);
        m_sessions = sessions;
        endInsertRows();
    }
}

/// New sessions come at the top: makes room for them, so that the rows below keep their sessions.
void SessionListModel::insertNewest(const QList<SessionItem> &sessions)
{
    const auto known = m_sessions.isEmpty()
        ? sessions.cend()
        : std::ranges::find_if(sessions, [this](const SessionItem &session) {
              return sameRow(session, m_sessions.constFirst());
          });
    const auto count = static_cast<int>(std::distance(sessions.cbegin(), known));
    if (known == sessions.cend() || count == 0) {
        return;
    }
    beginInsertRows({}, 0, count - 1);
    m_sessions = sessions.first(count) + m_sessions;
    endInsertRows();
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
        parts << dayAndTime(*m_strings, *session.end, m_now);
    }
    if (!session.device.isEmpty()) {
        parts << isolated(session.device);
    }
    return parts.join(QStringLiteral(" · "));
}

QString SessionListModel::spoken(const SessionItem &session) const
{
    const QString tokens =
        Strings::tokens(session.spent) % u' ' % m_strings->t(QStringLiteral("tokShort"));
    QStringList parts {session.title, detail(session), m_strings->money(session.cost), tokens};
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", "));
}

#include "moc_SessionListModel.cpp"
