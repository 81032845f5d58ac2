#pragma once

#include <optional>
#include <QObject>

/// Where the pointer is over the chart. Apart from the model, so that its movement redraws the
/// chart alone.
class HoverState final : public QObject {
    Q_OBJECT

public:
    enum class By { Pointer, Keyboard };

    using QObject::QObject;

    /// Points right of the plot's left edge; nothing while the pointer is elsewhere.
    [[nodiscard]] std::optional<double> x() const { return m_x; }

    /// The place was chosen by keyboard, and says nothing about the pointer.
    [[nodiscard]] bool byKeyboard() const { return m_by == By::Keyboard; }

    void setX(std::optional<double> x, By by = By::Pointer)
    {
        m_x = x;
        m_by = by;
        Q_EMIT xChanged();
    }

Q_SIGNALS:
    void xChanged();

private:
    std::optional<double> m_x;
    By m_by = By::Pointer;
};
