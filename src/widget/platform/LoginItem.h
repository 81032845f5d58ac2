#pragma once

#include <optional>
#include <QByteArray>
#include <QString>

/// The record in a user's files that starts the widget at login. Whether it is switched on is
/// whether the record is there; one that the desktop's own settings have switched off is as good as
/// none.
class LoginItem final {
public:
    /// How a system writes such a record, and how the started program is read out of one.
    struct Format {
        QByteArray (*write)(const QString &program);
        std::optional<QString> (*programIn)(const QByteArray &record);
        /// Whether something in the record keeps the system from starting the program.
        bool (*isOff)(const QByteArray &record);
    };

    /// A launch agent of macOS, which opens the bundle in the background of a graphical login.
    [[nodiscard]] static Format launchAgent();
    /// An autostart entry of the desktops on Linux.
    [[nodiscard]] static Format autostartEntry();
    /// This system's.
    [[nodiscard]] static Format format();

    /// `record` is the file, `program` what is to be started.
    LoginItem(QString record, QString program, Format format = LoginItem::format());

    [[nodiscard]] bool isOn() const;
    /// Writes the whole record, or removes it. Failures show in isOn() alone.
    void setAutostart(bool on) const;
    /// Writes the record again when it starts a program that has moved. One that is missing,
    /// switched off or cannot be read is left alone.
    void refreshAutostart() const;

private:
    [[nodiscard]] std::optional<QByteArray> recordBytes() const;

    QString m_record;
    QString m_program;
    Format m_format;
};
