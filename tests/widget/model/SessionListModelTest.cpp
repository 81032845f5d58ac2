#include "widget/model/SessionListModel.h"

#include "widget/text/Strings.h"
#include <gtest/gtest.h>
#include <QSignalSpy>
#include <QtTest/QAbstractItemModelTester>

namespace {

using namespace std::chrono;

class Sessions : public testing::Test {
protected:
    void SetUp() override
    {
        const Texts texts {{u"weekdayTime"_qs, u"ddd HH:mm"_qs}, {u"tokShort"_qs, u"tok"_qs},
            {u"dayTime"_qs, u"d MMM HH:mm"_qs}, {u"culture"_qs, u"en-US"_qs}};
        m_model.setLook(
            std::make_shared<Strings>(u"en"_qs, TranslationTable {{u"en"_qs, texts}}), m_noon);
    }

    /// A session for each letter, which is its title.
    void list(const char *letters)
    {
        QList<SessionItem> sessions;
        for (const char *letter = letters; *letter != 0; ++letter) {
            SessionItem item;
            item.title = QLatin1Char(*letter);
            item.id = sessions.size();
            sessions << item;
        }
        m_model.setSessions(sessions, {});
    }

    QString shown(int row, SessionListModel::Role role) const
    {
        return m_model.data(m_model.index(row), role).toString();
    }

    const TimePoint m_noon = sys_days(2026y / 3 / 5) + 11h; // a Thursday, in Berlin
    SessionListModel m_model {nullptr};
};

TEST_F(Sessions, areWrittenAsSeenFromNow)
{
    const std::pair<TimePoint, const char *> rows[] = {{m_noon - 12h, "today 00:00"},
        {m_noon - 12h - 1min, "yesterday 23:59"}, {m_noon - days(2), "Tue 12:00"},
        {m_noon - days(6), "Fri 12:00"}, {m_noon - days(7), "26 Feb 12:00"},
        {m_noon + days(1), "6 Mar 12:00"}};
    SessionItem item;
    for (const auto &[end, time] : rows) {
        item.end = end;
        item.project = u"kestrelbay"_qs;
        item.device = u"laptop"_qs;
        m_model.setSessions({item}, {});
        // Names keep their own writing direction to themselves.
        EXPECT_EQ(shown(0, SessionListModel::Detail),
            u"\u2068kestrelbay\u2069 · %1 · \u2068laptop\u2069"_qs.arg(QLatin1String(time)));
    }
    SessionItem bare;
    bare.cost = 1234.4;
    bare.spent = 1.25e6;
    m_model.setSessions({bare}, {});
    EXPECT_EQ(shown(0, SessionListModel::Title), u"—");
    EXPECT_EQ(shown(0, SessionListModel::Detail), u"");
    EXPECT_EQ(shown(0, SessionListModel::Spoken), u"$1,234, 1.3M tok");
}

TEST_F(Sessions, stayEachInItsRow)
{
    const QAbstractItemModelTester tester(
        &m_model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    int inserted = 0;
    int removed = 0;
    QObject::connect(&m_model, &QAbstractItemModel::rowsInserted, &m_model,
        [&](const QModelIndex &, int first, int last) { inserted += last - first + 1; });
    QObject::connect(&m_model, &QAbstractItemModel::rowsRemoved, &m_model,
        [&](const QModelIndex &, int first, int last) { removed += last - first + 1; });
    const QSignalSpy changed(&m_model, &QAbstractItemModel::dataChanged);
    // From one list to another, and how many rows are inserted, removed and changed.
    const std::tuple<const char *, const char *, int, int, int> rows[] = {{"", "abc", 3, 0, 0},
        {"abc", "abc", 0, 0, 0}, {"abc", "xyabc", 2, 0, 0}, {"abcd", "xabc", 1, 1, 0},
        {"abc", "ab", 0, 1, 0}, {"aaa", "aaaa", 1, 0, 0}, {"abc", "xbc", 0, 0, 1},
        {"abc", "axcd", 1, 0, 1}, {"abc", "bac", 1, 1, 1}, {"abc", "", 0, 3, 0}};
    for (const auto &[before, after, insertions, removals, changes] : rows) {
        list("");
        list(before);
        inserted = removed = 0;
        const auto changedBefore = changed.size();
        list(after);
        EXPECT_EQ(inserted, insertions) << before << " to " << after;
        EXPECT_EQ(removed, removals) << before << " to " << after;
        EXPECT_EQ(changed.size() - changedBefore, changes) << before << " to " << after;
        QString now;
        for (int i = 0; i < m_model.rowCount(); ++i) {
            now += shown(i, SessionListModel::Title);
        }
        EXPECT_EQ(now, QLatin1String(after));
    }
}

} // namespace
