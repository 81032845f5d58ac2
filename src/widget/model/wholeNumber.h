#pragma once

#include <QString>

/// A number cut off to a whole one, in decimal. What no integer holds stays at the largest; what is
/// no number is 0.
[[nodiscard]] QString wholeNumber(double value);
