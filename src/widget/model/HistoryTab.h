#pragma once

/// What the history card shows.
enum class HistoryTab { Days, Weeks, Months, Sessions };
