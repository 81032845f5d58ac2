#pragma once

#include <QStringList>

/// The code of the language to use: the preference where it is offered, else the first of the
/// system's languages ("de-CH", best first) whose language is offered, else "en".
[[nodiscard]] QString chooseLanguage(
    const QString &preference, const QStringList &offered, const QStringList &system);
