#pragma once

#include <QStringList>

/// The languages the user wants interfaces in, best first, as the system names them ("de-CH").
[[nodiscard]] QStringList preferredLanguages();
