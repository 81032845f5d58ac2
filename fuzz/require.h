#pragma once

/// Gives a sanitizer something to see when a rule of ours is broken.
inline void require(bool holds)
{
    if (!holds) {
        __builtin_trap();
    }
}
