#include "widget/app/PanelGeometry.h"

#include <gtest/gtest.h>

namespace {

using namespace PanelGeometry;

// A first screen with a bar of 30 at its top, one to its left and above with origins below zero,
// and one at its right whose scale factor leaves a gap between the two.
const Screen first {{0, 0, 1920, 1080}, {0, 30, 1920, 1050}};
const Screen left {{-1280, -200, 1280, 1024}, {-1280, -200, 1280, 1024}};
const Screen right {{3840, 0, 1280, 720}, {3840, 0, 1280, 680}};
const QList<Screen> all {first, left, right};
constexpr QSizeF compact(260, 270);

TEST(PanelGeometry, dropsFromTheItemAndStaysOnItsScreen)
{
    const struct {
        QRectF item;
        QRectF expected;
    } cases[] {
        {{1000, 0, 30, 30}, {885, 36, 260, 270}},
        {{1890, 0, 30, 30}, {1654, 36, 260, 270}},    // its right edge 6 points inside
        {{2, 0, 30, 30}, {6, 36, 260, 270}},          // and its left one
        {{4400, 690, 20, 20}, {4280, 404, 260, 270}}, // a dock at the bottom: above it
        {{-700, -200, 20, 40},
            {-820, -154, 260, 270}}, // on a screen left of the first, in a bar unheard of
        {{1500, 500, 1, 1}, {1371, 36, 260, 270}}, // no more than a pointer
    };
    for (const auto &[item, expected] : cases) {
        const QRectF frame = dropFrame(item, screenAt(all, item.center()).visible, compact);
        EXPECT_EQ(frame, expected) << item.x() << " → " << frame.x() << ", " << frame.y();
    }
    // What is wider than a screen begins where the screen does.
    EXPECT_EQ(dropFrame({100, 0, 1, 1}, {0, 0, 200, 200}, compact).topLeft(), QPointF(6, 0));
}

TEST(PanelGeometry, hangsOnTheScreenAtTheEndOfWhoseBarItIs)
{
    const Screen besides {{1920, 0, 1280, 1080}, {1920, 0, 1280, 1080}};
    const Screen under {{0, 1080, 1920, 1080}, {0, 1080, 1920, 1050}};
    const QList<Screen> screens {besides, under, first};
    for (const Screen &screen : screens) {
        EXPECT_EQ(
            screenAt(screens, QRectF(barEnd(screen), QSizeF(1, 1)).center()).frame, screen.frame);
    }
}

TEST(PanelGeometry, putsTheWindowWhereItWasAsLongAsAScreenShowsEnoughOfIt)
{
    const QPointF corner(1920 - 12 - 260, 1080 - 12 - 270);
    const struct {
        std::optional<WindowSpot> spot;
        QPointF expected;
    } cases[] {
        {std::nullopt, corner}, {WindowSpot {100, 200}, {100, 200}},
        {WindowSpot {0, 0}, {6, 30}},              // under the bar
        {WindowSpot {1860, 500}, {1654, 500}},     // 60 points of it
        {WindowSpot {1861, 500}, corner},          // 59
        {WindowSpot {500, 1040}, {500, 810}},      // 40 points of it
        {WindowSpot {500, 1041}, corner},          // 39
        {WindowSpot {-1000, -100}, {-1000, -100}}, // on the screen left of the first
        {WindowSpot {3000, 300}, corner},          // in the gap between two
        {WindowSpot {9000, 100}, corner},          // on a screen that is no more
    };
    for (const auto &[spot, expected] : cases) {
        const QRectF frame = placed(spot, compact, all);
        EXPECT_EQ(frame, QRectF(expected, compact))
            << (spot ? spot->left : 0) << " → " << frame.x() << ", " << frame.y();
    }
    // What is remembered is told from the first screen's corner, wherever that is.
    const Screen shifted {{100, 50, 1920, 1080}, {100, 50, 1920, 1080}};
    EXPECT_EQ(spot({340, 250, 260, 270}, shifted), (WindowSpot {240, 200}));
    EXPECT_EQ(placed(WindowSpot {240, 200}, compact, {shifted}).topLeft(), QPointF(340, 250));
}

TEST(PanelGeometry, keepsTheCornerThatIsNearestToOneOfTheScreen)
{
    constexpr QSizeF wide(340, 600);
    const struct {
        QPointF place;
        QPointF grown;
    } cases[] {
        {{10, 40}, {10, 40}},
        {{1600, 40}, {1520, 40}},
        {{10, 800}, {10, 470}},
        {{1600, 800}, {1520, 470}},
    };
    for (const auto &[place, grown] : cases) {
        const Anchor anchor = nearestCorner({place, compact}, first.visible);
        EXPECT_EQ(anchored(anchor, wide), QRectF(grown, wide)) << place.x();
        EXPECT_EQ(anchored(anchor, compact), QRectF(place, compact)) << place.x();
    }
}

} // namespace
