#pragma once

/// How the widget is shown: under its tray icon, or as a window of its own.
enum class ViewMode { Icon, Window };
