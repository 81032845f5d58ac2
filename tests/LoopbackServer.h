#pragma once

#include <QList>
#include <QSslServer>

/// A server on this computer that speaks HTTPS, gives every request the same answer and keeps what
/// it was asked. Its certificate is made with the tests and trusted only on demand.
class LoopbackServer final {
public:
    enum class Then { Close, Hang };

    /// An answer with this status and body, and further header lines, each with its end.
    [[nodiscard]] static QByteArray http(
        const QByteArray &status, const QByteArray &body, const QByteArray &headers = {});
    /// Has this process trust the certificate, or not any more.
    static void trust(bool on);

    explicit LoopbackServer(QByteArray answer, Then then = Then::Close);

    /// Its root address, ending in "/".
    [[nodiscard]] QString root() const;
    /// The requests up to and with their empty line.
    [[nodiscard]] const QList<QByteArray> &requests() const { return m_requests; }
    /// Connections that were ever begun, whatever came of them.
    [[nodiscard]] int connections() const { return m_server.connections; }
    /// Connections that have ended.
    [[nodiscard]] int ended() const { return m_ended; }
    /// Bytes that went out over the wire.
    [[nodiscard]] qint64 sent() const { return m_sent; }

private:
    class Listener final : public QSslServer {
    public:
        int connections = 0;

    protected:
        void incomingConnection(qintptr socket) override
        {
            ++connections;
            QSslServer::incomingConnection(socket);
        }
    };

    void take(QSslSocket *socket);

    QByteArray m_answer;
    Then m_then;
    QList<QByteArray> m_requests;
    int m_ended = 0;
    qint64 m_sent = 0;
    Listener m_server; // last, so that its sockets go before what they count in
};
