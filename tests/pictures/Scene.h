#pragma once

#include "pictures/Stage.h"
#include <functional>

/// One state of the panel that a picture is taken of.
struct Scene {
    QString name;
    std::function<void(Stage &)> prepare; ///< called before the panel is shown
    std::optional<double> hoverX;         ///< where the pointer is over the chart
    bool enlarged = false;                ///< is to be seen with a larger system font, too
};

[[nodiscard]] QList<Scene> allScenes();
