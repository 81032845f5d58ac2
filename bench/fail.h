#pragma once

#include <QString>

/// Ends the program with this line: nothing is measured when something could not be.
[[noreturn]] void fail(const QString &message);
