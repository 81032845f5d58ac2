#pragma once

#include <QIcon>
#include <QLatin1String>

/// The drawing of a menu item in the colours of the menu's text, which are the application
/// palette's when it is drawn. Only the menu's own symbol names are known, such as
/// "gearshape".
[[nodiscard]] QIcon menuIcon(QLatin1String symbol);
