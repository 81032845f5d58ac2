#pragma once

#include <array>
#include <QObject>

/// Turns SIGTERM, SIGINT and SIGHUP into a Qt signal, so that they end the program through its
/// ordinary exit path. One at a time; while it lives the signals do nothing else.
class ExitSignals final : public QObject {
    Q_OBJECT

public:
    explicit ExitSignals(QObject *parent = nullptr);
    ~ExitSignals() override;
    Q_DISABLE_COPY_MOVE(ExitSignals)

Q_SIGNALS:
    /// The program has been asked to end.
    void exitRequested();

private:
    std::array<int, 2> m_pipe {-1, -1};
};
