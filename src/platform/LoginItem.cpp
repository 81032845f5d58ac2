#include "platform/LoginItem.h"

#include "core/readJSON.h"
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

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
        QFile::remove(m_record);
        return;
    }
    QDir().mkpath(QFileInfo(m_record).path());
    QSaveFile file(m_record);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(m_format.write(m_program));
        file.commit();
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
