#pragma once

#include <QString>

class Strings;

/// What the start at login is called, which names the system it runs on where it names one.
[[nodiscard]] QString autostartTitle(const Strings &strings);
