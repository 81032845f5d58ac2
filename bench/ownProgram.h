#pragma once

#include <QString>

/// The path of a program that is built with this one, by its name.
[[nodiscard]] inline QString ownProgram(const char *name)
{
    return QStringLiteral(KESTRELBAY_PROGRAMS "/") + QLatin1String(name);
}
