#include "model/SessionListModel.h"

#include "text/Strings.h"
#include <gtest/gtest.h>
#include <QSignalSpy>
#include <QtTest/QAbstractItemModelTester>

namespace {

using namespace std::chrono;

const TimePoint noon = sys_days(2026y / 3 / 5) + 11h; // a Thursday, in Berlin

std::shared_ptr<const Strings> english()
{
    const Texts texts {
        {QStringLiteral("sessionToday"), QStringLiteral("today {0}")},
        {QStringLiteral("sessionYesterday"), QStringLiteral("yesterday {0}")},
        {QStringLiteral("weekdayTime"), QStringLiteral("ddd HH:mm")},
        {QStringLiteral("dayTime"), QStringLiteral("d MMM HH:mm")},
        {QStringLiteral("culture"), QStringLiteral("en-US")},
        {QStringLiteral("tokShort"), QStringLiteral("tok")},
    };
    return std::make_shared<Strings>(
        QStringLiteral("en"), TranslationTable {{QStringLiteral("en"), texts}});
}

SessionItem session(const QString &title, std::optional<TimePoint> end = {})
{
    SessionItem item;
    item.title = title;
    item.end = end;
    return item;
}

QList<SessionItem> titled(const QString &letters)
{
    QList<SessionItem> list;
    for (const QChar letter : letters) {
        list << session(letter);
        list.last().id = list.size() - 1;
    }
    return list;
}

std::string visible(const SessionListModel &model, int row, SessionListModel::Role role)
{
    QString text = model.data(model.index(row), role).toString();
    text.remove(QChar(0x2068)).remove(QChar(0x2069));
    return text.toStdString();
}

TEST(SessionListModel, writesRowsAsSeenFromNow)
{
    SessionListModel model(nullptr);
    model.setLook(english(), noon);
    const struct {
        TimePoint end;
        const char *detail;
    } rows[] = {
        {noon - 12h, "kestrelbay · today 00:00 · laptop"},
        {noon - 12h - 1min, "kestrelbay · yesterday 23:59 · laptop"},
        {noon - days(2), "kestrelbay · Tue 12:00 · laptop"},
        {noon - days(6), "kestrelbay · Fri 12:00 · laptop"},
        {noon - days(7), "kestrelbay · 26 Feb 12:00 · laptop"},
        {noon + days(1), "kestrelbay · 6 Mar 12:00 · laptop"},
    };
    for (const auto &row : rows) {
        SessionItem item = session(QStringLiteral("t"), row.end);
        item.project = QStringLiteral("kestrelbay");
        item.device = QStringLiteral("laptop");
        model.setSessions({item});
        EXPECT_EQ(visible(model, 0, SessionListModel::Detail), row.detail);
    }

    SessionItem bare = session({});
    bare.cost = 1234.4;
    bare.spent = 1.25e6;
    model.setSessions({bare});
    EXPECT_EQ(visible(model, 0, SessionListModel::Title), "—");
    EXPECT_EQ(visible(model, 0, SessionListModel::Detail), "");
    EXPECT_EQ(visible(model, 0, SessionListModel::Cost), "$1,234");
    EXPECT_EQ(visible(model, 0, SessionListModel::Tokens), "1.3M");
    EXPECT_EQ(visible(model, 0, SessionListModel::Spoken), "$1,234, 1.3M tok");
}

TEST(SessionListModel, keepsEachSessionInItsRow)
{
    const struct {
        const char *before;
        const char *after;
        int inserted;
        int removed;
        int changed;
    } rows[] = {
        {"", "abc", 3, 0, 0},
        {"abc", "abc", 0, 0, 0},
        {"abc", "xyabc", 2, 0, 0},
        {"abcd", "xabc", 1, 1, 0},
        {"abc", "ab", 0, 1, 0},
        {"aaa", "aaaa", 1, 0, 0},
        {"abc", "xbc", 0, 0, 1},
        {"abc", "axcd", 1, 0, 1},
        {"abc", "bac", 1, 1, 1},
        {"abc", "", 0, 3, 0},
    };
    for (const auto &row : rows) {
        SessionListModel model(nullptr);
        const QAbstractItemModelTester tester(
            &model, QAbstractItemModelTester::FailureReportingMode::Fatal);
        model.setLook(english(), noon);
        model.setSessions(titled(QLatin1String(row.before)));
        int inserted = 0;
        int removed = 0;
        QObject::connect(&model, &QAbstractItemModel::rowsInserted, &model,
            [&](const QModelIndex &, int first, int last) { inserted += last - first + 1; });
        QObject::connect(&model, &QAbstractItemModel::rowsRemoved, &model,
            [&](const QModelIndex &, int first, int last) { removed += last - first + 1; });
        const QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        model.setSessions(titled(QLatin1String(row.after)));

        EXPECT_EQ(inserted, row.inserted) << row.before << " to " << row.after;
        EXPECT_EQ(removed, row.removed) << row.before << " to " << row.after;
        EXPECT_EQ(changed.size(), row.changed) << row.before << " to " << row.after;
        QString now;
        for (int i = 0; i < model.rowCount(); ++i) {
            now += model.data(model.index(i), SessionListModel::Title).toString();
        }
        EXPECT_EQ(now, QLatin1String(row.after));
    }
}

} // namespace
