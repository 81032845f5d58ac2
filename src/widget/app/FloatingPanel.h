#pragma once

#include <memory>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTimer>

class Dashboard;
class PanelActions;

/// The borderless, translucent window that the panel fills. It is told where to be; what it reports
/// is what the user does with it, and how large its content wants to be.
///
/// It does not take the keyboard when it is shown, and takes it when it is clicked.
class FloatingPanel final : public QQuickWindow {
    Q_OBJECT

public:
    /// Where it stands among other windows.
    enum class Level { Normal, Floating, StatusBar };

    FloatingPanel(Dashboard &dashboard, PanelActions &actions);
    ~FloatingPanel() override;
    Q_DISABLE_COPY_MOVE(FloatingPanel)

    [[nodiscard]] QQuickItem *rootObject() const { return m_root.get(); }
    /// Where the panel is on the screens.
    [[nodiscard]] const QRectF &frame() const { return m_frame; }
    /// How large the content wants to be.
    [[nodiscard]] QSizeF contentSize() const;
    /// On screen, and not merely a minimised window.
    [[nodiscard]] bool isShown() const;

    void setFrame(const QRectF &frame);
    /// Has the content work out its size now, also while the panel is hidden, and tells of it.
    void settle();
    /// How high the content may be; it works out its size anew.
    void setRoom(double height);
    /// Makes the frame as large as the content, its top-left corner where it is.
    void fitContent();
    /// Until `closeStage`, the frame moves within a window that stays as it is and covers `stage`,
    /// so that the window system is not asked for a new size at every step. Where windows are not
    /// blended with what is behind them that would be seen, and nothing is done.
    void openStage(const QRectF &stage);
    /// Ends that; the window is where the panel is.
    void closeStage(const QRectF &frame);

    void setLevel(Level level);
    /// Whether windows are blended with what is behind them; else the panel has to fill its window.
    void setTranslucent(bool translucent);
    void orderFront();
    void orderOut();
    /// Lets the pointer, which is down on it, drag it.
    void drag();

Q_SIGNALS:
    /// What the content wants to be by now, once for each change of its layout.
    void contentResized(const QSizeF &size);
    /// The window is to be closed, which only puts it away.
    void closeRequested();
    void escapePressed();
    /// The right button, the left one with Control, or a key that opens menus.
    void contextClicked(const QPoint &place);
    /// The user has dragged it.
    void moved();

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void watchContent();
    void ask(const QRect &geometry);
    void arrive();
    [[nodiscard]] static bool isContextClick(const QMouseEvent &event);

    QQmlEngine m_engine;
    std::unique_ptr<QQuickItem> m_root;
    QRectF m_frame;
    QPoint m_asked;  ///< the window's corner, as it was asked for
    QPoint m_corner; ///< and as the window system last told it
    /// The window has been where it was asked to be: if it leaves, it was moved.
    bool m_heeded = false;
    bool m_translucent = true;
    bool m_staged = false;
    bool m_unsettled = false; ///< the content's wish is to be told of
    QTimer m_patience;        ///< with a window system that has yet to do what was asked
    /// The pointer from the corner, where no window manager drags the window.
    std::optional<QPoint> m_dragFrom;
};
