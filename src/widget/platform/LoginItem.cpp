#include "widget/platform/LoginItem.h"

#include "widget/core/readJSON.h"
#include "widget/core/replaceFile.h"
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
    const std::optional<QByteArray> record = recordBytes();
    return record ? !m_format.isOff(*record) : QFileInfo::exists(m_record);
}

void LoginItem::setAutostart(bool on) const
{
    if (!on) {
        QFile::remove(m_record);
        return;
    }
    QDir().mkpath(QFileInfo(m_record).path());
    static_cast<void>(replaceFile(m_record, m_format.write(m_program)));
}

void LoginItem::refreshAutostart() const
{
    const std::optional<QByteArray> record = recordBytes();
    const std::optional<QString> program = record ? m_format.programIn(*record) : std::nullopt;
    if (program && program != m_program && !m_format.isOff(*record)) {
        setAutostart(true);
    }
}

std::optional<QByteArray> LoginItem::recordBytes() const
{
    constexpr qint64 most = 1'000'000; // bytes
    return readJSON(m_record, most);
}
