#pragma once

#include "widget/views/theme/Metrics.h"
#include "widget/views/theme/Motion.h"
#include "widget/views/theme/Palette.h"
#include <QtQml/qqml.h>

// The theme's tables under their QML names.

struct ThemeTableInQml {
    Q_GADGET
    QML_FOREIGN(ThemeTable)
    QML_ANONYMOUS
};

struct PaletteInQml {
    Q_GADGET
    QML_FOREIGN(Palette)
    QML_NAMED_ELEMENT(Colors)
    QML_SINGLETON
};

struct MetricsInQml {
    Q_GADGET
    QML_FOREIGN(Metrics)
    QML_NAMED_ELEMENT(Metrics)
    QML_SINGLETON
};

struct MotionInQml {
    Q_GADGET
    QML_FOREIGN(Motion)
    QML_NAMED_ELEMENT(Motion)
    QML_SINGLETON
};
