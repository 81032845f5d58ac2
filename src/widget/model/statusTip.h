#pragma once

#include <QString>

class WidgetModel;

/// The tray icon's line of text: "Claude · 5 hours 42% · Week 8%", or that nothing is known yet.
[[nodiscard]] QString statusTip(const WidgetModel &model);
