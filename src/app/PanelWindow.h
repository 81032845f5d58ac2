#pragma once

#include <QQuickView>

class PanelActions;
class WidgetModel;

/// The borderless, translucent window that the panel fills. It takes the panel's size and is moved
/// by dragging any empty place.
class PanelWindow final : public QQuickView {
    Q_OBJECT

public:
    PanelWindow(WidgetModel &model, PanelActions &actions);
};
