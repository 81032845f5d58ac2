#pragma once

#include "pictures/Canned.h"
#include "pictures/Stage.h"

/// One state of the panel that a picture is taken of; what is left out is ordinary.
struct Scene {
    enum class Needs { Nothing, Statistics, Node };

    const char *name;
    bool expanded = false;
    HistoryTab tab = HistoryTab::Days;
    std::optional<double> hoverX = {}; ///< where the pointer is over the chart
    qint64 back = 0;                   ///< as many bars as history is scrolled back
    Canned::Extent extent = {};
    Needs needs = Needs::Nothing; ///< what is missing
    std::optional<Limits> limits = Canned::limits();
    Provider provider = Provider::Claude;
    bool crowded = false;  ///< with as many buttons as the header ever has
    bool enlarged = false; ///< is to be seen with a larger system font, too

    /// Puts the stage into this state before the panel is shown.
    void prepare(Stage &stage) const;
};

[[nodiscard]] QList<Scene> allScenes();
