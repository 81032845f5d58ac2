#include "platform/LoginItem.h"

#include "core/readJSON.h"
#include "core/replaceFile.h"
#include "core/WidgetLog.h"
#include <QDir>
#include <QFileInfo>

LoginItem::LoginItem(QString record, QString program, Format format)
    : m_record(std::move(record))
    , m_program(std::move(program))
    , m_format(format)
{
}

LoginItem::Format LoginItem::format()
{
#ifdef Q_OS_MACOS
    return launchAgent();
#else
    return autostartEntry();
#endif
}

bool LoginItem::isOn() const
{
    return QFileInfo::exists(m_record);
}

void LoginItem::setAutostart(bool on) const
{
    if (!on) {
        QFile record(m_record);
        if (!record.remove() && record.exists()) {
            WidgetLog::write(u"start at login not switched off: " % record.errorString());
        }
        return;
    }
    QDir().mkpath(QFileInfo(m_record).path());
    if (const auto failure = replaceFile(m_record, m_format.write(m_program))) {
        WidgetLog::write(u"start at login not switched on: " % *failure);
    }
}

void LoginItem::refreshAutostart() const
{
    const std::optional<QByteArray> record = readJSON(m_record);
    const std::optional<QString> program = record ? m_format.programIn(*record) : std::nullopt;
    if (program && program != m_program) {
        setAutostart(true);
    }
}
