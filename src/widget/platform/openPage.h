#pragma once

#include <QUrl>

/// Shows a page in the user's browser. One that is started for it starts as if the user had started
/// it: nothing that keepPrivate() has set holds for it.
void openPage(const QUrl &page);
