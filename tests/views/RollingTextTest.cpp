#include "views/RollingText.h"
#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QSignalSpy>

namespace {

/// The places as "before>after", those that stay as they are.
std::string drawn(const RollingText &rolling)
{
    QStringList places;
    for (const RollGlyph &glyph : rolling.glyphs()) {
        places << (glyph.rolls ? QString(glyph.before % u'>' % glyph.after) : glyph.after);
    }
    return places.join(u' ').toStdString();
}

TEST(RollingText, pairsPlacesFromTheRight)
{
    const struct {
        const char *before;
        double from;
        const char *after;
        double to;
        const char *places;
        int direction;
    } rows[] = {
        {"$9.31", 9.31, "$12.48", 12.48, ">$ $>1 9>2 . 3>4 1>8", 1},
        {"$12.48", 12.48, "$9.31", 9.31, "$> 1>$ 2>9 . 4>3 8>1", -1},
        {"4.2M", 1, "4.3M", 1, "4 . 2>3 M", 1},
    };
    for (const auto &row : rows) {
        RollingText rolling;
        rolling.setValue(row.from);
        rolling.setText(QLatin1String(row.before));
        EXPECT_EQ(rolling.shown(), QLatin1String(row.before)) << "the first text does not roll";
        QSignalSpy rolled(&rolling, &RollingText::rolled);
        // In the order in which bindings may deliver them.
        rolling.setText(QLatin1String(row.after));
        rolling.setValue(row.to);
        QCoreApplication::processEvents();
        EXPECT_EQ(rolled.size(), 1);
        EXPECT_EQ(drawn(rolling), row.places);
        EXPECT_EQ(rolling.direction(), row.direction) << row.after;
    }
}

TEST(RollingText, staysWhereTheTextStays)
{
    RollingText rolling;
    rolling.setText(QStringLiteral("$1.00"));
    QSignalSpy rolled(&rolling, &RollingText::rolled);
    rolling.setValue(1.001);
    rolling.setText(QStringLiteral("$1.00"));
    rolling.setText(QStringLiteral("$2.00"));
    rolling.setText(QStringLiteral("$1.00"));
    QCoreApplication::processEvents();
    EXPECT_EQ(rolled.size(), 0);
}

} // namespace
