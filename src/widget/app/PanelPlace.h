#pragma once

#include "widget/app/PanelGeometry.h"
#include <functional>
#include <QObject>
#include <QPoint>

class DesktopWatch;
class QScreen;

/// Where the panel stands on the screens as they are: below or above the status item that it hangs
/// from, or where the user has left it.
class PanelPlace final : public QObject {
    Q_OBJECT

public:
    /// Where the status item is; empty when the tray does not tell, nothing without a tray.
    using StatusItemFrame = std::function<std::optional<QRect>()>;

    /// The desktop outlives this object.
    PanelPlace(const DesktopWatch &desktop, StatusItemFrame statusItem);

    [[nodiscard]] bool hasItem() const { return m_statusItem().has_value(); }
    [[nodiscard]] const std::optional<WindowSpot> &spot() const { return m_spot; }
    /// The item, or the place that stands in for it.
    [[nodiscard]] QRectF itemFrame();
    [[nodiscard]] QRectF hanging(QSizeF size);
    /// Of a free panel, from where it was left.
    [[nodiscard]] QRectF standing(QSizeF size) const;
    /// Of a free panel that has this frame and may be out of sight.
    [[nodiscard]] QRectF inSight(const QRectF &frame, QSizeF size) const;
    /// Of a free panel that grows or shrinks, at the corner that it keeps.
    [[nodiscard]] QRectF resized(const QRectF &frame, QSizeF size);
    /// How high a panel may be there.
    [[nodiscard]] double room(QPointF point) const;
    /// Whether what hangs comes from above.
    [[nodiscard]] bool hangsFromAbove();

    void restore(const std::optional<WindowSpot> &spot) { m_spot = spot; }
    /// The item was clicked where the pointer is.
    void noteClick();
    /// The panel comes while the pointer is where it is.
    void noteShown();
    /// The panel has been put elsewhere: the corner that it keeps is another.
    void releaseCorner() { m_anchor.reset(); }
    /// The user has put the panel there.
    void takeSpot(const QRectF &frame);
    /// Has the remembered spot follow a new size, unless it is one that no screen shows. Whether it
    /// has.
    bool moveSpot(const QRectF &before, const QRectF &frame);

Q_SIGNALS:
    /// Screens, or what bars leave of them, are others than before.
    void screensChanged();

private:
    [[nodiscard]] QList<PanelGeometry::Screen> screens() const;
    [[nodiscard]] QRectF visibleAround(QPointF point) const;

    const DesktopWatch &m_desktop;
    StatusItemFrame m_statusItem;
    std::optional<WindowSpot> m_spot;
    std::optional<PanelGeometry::Anchor> m_anchor; ///< until the user moves it
    QRect m_item;                                  ///< where the status item was last known to be
    std::optional<QPoint> m_pointer;               ///< where it was when the item was last clicked
    QPoint m_shownFrom;                            ///< where it was when the panel was last shown
};
