#pragma once

#include "home/Dice.h"

#include <algorithm>

/// How long what tools and people write is: mostly short, for the rest whole files of all sizes,
/// and very few are pictures or logs of megabytes where there is room for a fraction of them. With
/// the answers between them it makes lines of about 0.7 kB in the middle, 5 kB at the 90th of a
/// hundred and 46 kB at the 99th.
[[nodiscard]] inline std::size_t lengthOfInput(Dice &dice, double shortShare, std::size_t room)
{
    constexpr double pictures = 0.0001;
    constexpr std::size_t roomForPictures = 200'000;
    if (dice.share() < pictures && room > roomForPictures) {
        return static_cast<std::size_t>(dice.between(2e6, 5e6));
    }
    if (dice.share() < shortShare) {
        return static_cast<std::size_t>(dice.between(20, 300));
    }
    const double place = dice.share();
    const double length = place < 0.10 ? dice.between(300, 4'500)
        : place < 0.93                 ? dice.between(4'500, 46'000)
                                       : dice.between(46'000, 300'000);
    return std::min(static_cast<std::size_t>(length), room);
}
