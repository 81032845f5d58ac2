#pragma once

#include <QEvent>
#include <QGuiApplication>
#include <QQuickWindow>

/// Carries out what is pending and draws what has changed, at once instead of at the next tick of
/// the screen.
inline void drawFrame(QQuickWindow &window)
{
    QCoreApplication::processEvents();
    QEvent due(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(&window, &due);
}

/// Draws the whole window although nothing in it has changed but what lies behind everything.
inline void drawEverything(QQuickWindow &window)
{
    // Both are as good as transparent; a change makes the renderer begin from nothing.
    const QColor other(0, 0, 0, 1);
    window.setColor(window.color() == other ? QColor(0, 0, 0, 0) : other);
    drawFrame(window);
}
