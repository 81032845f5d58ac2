#include "WidgetTarget.h"

#include "requireOwnHome.h"
#include "widget/core/dataFolder.h"
#include "widget/core/Paths.h"
#include "widget/text/Strings.h"
#include <cstdlib>
#include <QFile>

const Strings &strings()
{
    static const Strings english(QStringLiteral("en"), I18n::load());
    return english;
}

extern "C" int LLVMFuzzerInitialize(int * /*count*/, char *** /*arguments*/)
{
    requireOwnHome();
    setenv("TZ", "Europe/Berlin", 1);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    require(makeDataFolder());
    QFile::remove(Paths::i18n());
    require(QFile::copy(QStringLiteral(SHIPPED_TRANSLATIONS), Paths::i18n()));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const char *data, std::size_t size)
{
    tryInput(QByteArray(data, static_cast<qsizetype>(size)));
    return 0;
}
