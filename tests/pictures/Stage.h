#pragma once

#include "FakeClock.h"
#include "widget/app/FloatingPanel.h"
#include "widget/model/Dashboard.h"
#include "widget/views/PanelActions.h"
#include <memory>

/// The real panel at the moment of the canned figures, to be drawn or measured without a display.
class Stage final {
public:
    /// Puts an application without a display into the time zone of the canned figures; to be called
    /// before there is one.
    static void setUp();
    /// Writes the translations where the panel finds them; false, with a line, when the home
    /// directory is somebody's own.
    [[nodiscard]] static bool furnishHome(const QString &translations);

    /// Gives the application the widget's own typeface, this many times as large as usual; panels
    /// that are made from then on follow it.
    static void setFont(double enlargement = 1);

    Stage();

    [[nodiscard]] WidgetModel &model() { return m_model; }
    [[nodiscard]] Dashboard &dashboard() { return m_dashboard; }
    [[nodiscard]] PanelActions &actions() { return m_actions; }
    /// Only after show().
    [[nodiscard]] FloatingPanel &window() { return *m_window; }

    /// Shows the panel as the model is by now.
    void show();
    /// Lets sizes and fades come to rest; false when they do not.
    [[nodiscard]] bool settle();

private:
    FakeClock m_clock;
    WidgetModel m_model;
    Dashboard m_dashboard;
    PanelActions m_actions {nullptr};
    std::unique_ptr<FloatingPanel> m_window;
};
