#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <utility>

/// Animation timings, in seconds, and the one switch that turns every animation off.
///
/// Each function yields nothing while `reduced()` is true; views ask each time they build an
/// animation. Main thread only.
namespace Motion {

inline constexpr double expandTime = 0.28;
inline constexpr double settleTime = 0.2;
inline constexpr double showTime = 0.22;
inline constexpr double hideTime = 0.14;
inline constexpr double rise = 8;        ///< points by which the widget rises into place when shown
inline constexpr double unfoldShift = 6; ///< points above their place from which elements unfold
inline constexpr double popShift = 5;    ///< points by which popping elements move downwards
inline constexpr double pressScale = 0.94; ///< scale of a held button

/// An ease-out curve: how long it takes and how long it waits before it starts.
struct Ease {
    double duration = 0;
    double delay = 0;

    bool operator==(const Ease &) const = default;
};

/// A damped spring.
struct Spring {
    double response = 0;
    double damping = 0;
    double blend = 0;

    bool operator==(const Spring &) const = default;
};

namespace detail {
struct Switch {
    bool reduced = false;
    std::map<const void *, std::function<void()>> changed; ///< by who listens
};

inline Switch &theSwitch()
{
    static Switch instance;
    return instance;
}
} // namespace detail

/// Whether every animation is off.
[[nodiscard]] inline bool reduced()
{
    return detail::theSwitch().reduced;
}

/// Turns every animation off or on; takes effect with the next animation.
inline void setReduced(bool reduced)
{
    detail::theSwitch().reduced = reduced;
    for (const auto &[owner, changed] : detail::theSwitch().changed) {
        changed();
    }
}

/// Has `changed` called after each setReduced, until its owner stops listening.
inline void onReducedChanged(const void *owner, std::function<void()> changed)
{
    detail::theSwitch().changed[owner] = std::move(changed);
}

inline void stopListening(const void *owner)
{
    detail::theSwitch().changed.erase(owner);
}

[[nodiscard]] inline std::optional<Ease> ease(double duration, double delay = 0)
{
    return reduced() ? std::nullopt : std::optional(Ease {duration, delay});
}

[[nodiscard]] inline std::optional<Ease> hover()
{
    return ease(0.12);
}

[[nodiscard]] inline std::optional<Ease> press()
{
    return ease(0.08);
}

[[nodiscard]] inline std::optional<Ease> tab()
{
    return ease(0.2);
}

[[nodiscard]] inline std::optional<Ease> expand()
{
    return ease(expandTime);
}

[[nodiscard]] inline std::optional<Ease> number()
{
    return ease(0.35);
}

[[nodiscard]] inline std::optional<Ease> fill()
{
    return ease(0.5);
}

[[nodiscard]] inline std::optional<Ease> tip()
{
    return ease(0.16);
}

[[nodiscard]] inline std::optional<Spring> island()
{
    return reduced() ? std::nullopt : std::optional(Spring {0.36, 0.82, 0});
}

/// Element i of a row starts 20 ms after element i − 1; from the twentieth on all start together.
[[nodiscard]] inline std::optional<Ease> grow(int i)
{
    return ease(0.4, std::min(i, 20) * 0.02);
}

} // namespace Motion
