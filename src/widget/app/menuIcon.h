#pragma once

#include <QIcon>
#include <QLatin1String>

/// An icon of the program's, such as "settings", in the colours of the menu's text, which are the
/// application palette's when it is drawn.
[[nodiscard]] QIcon menuIcon(QLatin1String drawing);
