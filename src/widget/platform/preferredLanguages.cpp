#include "widget/platform/preferredLanguages.h"

#include <QLocale>

QStringList preferredLanguages()
{
    return QLocale::system().uiLanguages();
}
