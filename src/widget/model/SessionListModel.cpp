#include "widget/model/SessionListModel.h"

#include "widget/model/dayAndTime.h"
#include "widget/text/Strings.h"
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

SessionListModel::Shown SessionListModel::shownOf(
    const QList<SessionItem> &sessions, const QString &provider)
{
    Shown shown {sessions, {}};
    for (qsizetype place = 0; place < sessions.size(); ++place) {
        if (sessions.at(place).provider == provider) {
            shown.places.append(static_cast<int>(place));
        }
    }
    return shown;
}

/// How many sessions have come at the top, where new ones do: the rows below keep theirs.
qsizetype SessionListModel::newestCount(const Shown &before, const Shown &after)
{
    for (qsizetype row = 0; before.size() > 0 && row < after.size(); ++row) {
        if (sameRow(after.at(row), before.at(0))) {
            return row;
        }
    }
    return 0;
}

SessionListModel::SessionListModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

int SessionListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_shown.size());
}

QVariant SessionListModel::data(const QModelIndex &index, int role) const
{
    if (!m_strings || !checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const SessionItem &session = m_shown.at(index.row());
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

void SessionListModel::setSessions(const QList<SessionItem> &sessions, const QString &provider)
{
    const Shown before = m_shown;
    const Shown after = shownOf(sessions, provider);
    const qsizetype newest = newestCount(before, after);
    // Rows whose place is needed go first, so that from the insertion on there is only the new
    // list.
    const qsizetype kept = std::min(before.size(), after.size() - newest);
    if (kept < before.size()) {
        beginRemoveRows({}, static_cast<int>(kept), rowCount() - 1);
        m_shown.places.resize(kept);
        endRemoveRows();
    }
    grow(after, 0, newest);
    for (qsizetype row = 0; row < kept; ++row) {
        if (!sameRow(before.at(row), after.at(newest + row))) {
            const QModelIndex changed = index(static_cast<int>(newest + row));
            Q_EMIT dataChanged(changed, changed);
        }
    }
    grow(after, newest + kept, after.size() - newest - kept);
}

/// Takes over the list up to so many new rows, which begin at a row.
void SessionListModel::grow(const Shown &list, qsizetype first, qsizetype count)
{
    const qsizetype size = m_shown.size() + count;
    if (count > 0) {
        beginInsertRows({}, static_cast<int>(first), static_cast<int>(first + count) - 1);
    }
    m_shown = {list.sessions, list.places.first(size)};
    if (count > 0) {
        endInsertRows();
    }
}

void SessionListModel::setLook(std::shared_ptr<const Strings> strings, TimePoint now)
{
    m_strings = std::move(strings);
    m_now = now;
    if (m_shown.size() > 0) {
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
