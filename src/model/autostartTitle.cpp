#include "model/autostartTitle.h"

#include "text/Strings.h"
#include <QSysInfo>

QString autostartTitle(const Strings &strings)
{
    const bool onMac = QSysInfo::kernelType() == QLatin1String("darwin");
    return strings.t(QStringLiteral("menuWithWindows"))
        .replace(QLatin1String("Windows"), onMac ? QLatin1String("macOS") : QLatin1String("Linux"));
}
