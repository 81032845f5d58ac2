// The widget's own state: what was read comes back as it is written, and the panel stays in sight.

#include "widget/app/StateFile.h"

#include "widget/app/PanelGeometry.h"
#include "widget/core/Paths.h"
#include "WidgetTarget.h"

#include <algorithm>
#include <QFile>

namespace {

/// Two screens side by side with a bar at their tops.
QList<PanelGeometry::Screen> screens()
{
    const QRectF left(0, 0, 1920, 1080);
    const QRectF right(1920, -200, 1280, 1024);
    return {{left, left.adjusted(0, 32, 0, 0)}, {right, right.adjusted(0, 32, 0, 0)}};
}

} // namespace

void tryInput(const QByteArray &bytes)
{
    QFile file(Paths::state());
    require(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    require(file.write(bytes) == bytes.size());
    file.close();

    const PersistedState state = StateFile::loadState();
    require(isSane(state.updateCheckedAt));
    StateFile().saveState(state);
    require(StateFile::loadState() == state);

    const QRectF frame = PanelGeometry::placed(state.windowSpot, {262, 480}, screens());
    require(std::ranges::any_of(screens(),
        [&frame](const PanelGeometry::Screen &screen) { return screen.visible.contains(frame); }));
}
