#include "LoopbackServer.h"

#include <QFile>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslSocket>

namespace {

QList<QSslCertificate> certificates()
{
    return QSslCertificate::fromPath(QStringLiteral(KESTRELBAY_TEST_CERTIFICATE ".pem"));
}

QSslConfiguration serverConfiguration()
{
    QFile key(QStringLiteral(KESTRELBAY_TEST_CERTIFICATE ".key"));
    if (!key.open(QIODevice::ReadOnly)) {
        qFatal("the key of the loopback server is missing");
    }
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setLocalCertificateChain(certificates());
    configuration.setPrivateKey(QSslKey(&key, QSsl::Ec));
    return configuration;
}

} // namespace

QByteArray LoopbackServer::http(
    const QByteArray &status, const QByteArray &body, const QByteArray &headers)
{
    return "HTTP/1.1 " + status + "\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n"
        + headers + "\r\n" + body;
}

void LoopbackServer::trust(bool on)
{
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setCaCertificates(on ? certificates() : QList<QSslCertificate>());
    QSslConfiguration::setDefaultConfiguration(configuration);
}

LoopbackServer::LoopbackServer(QByteArray answer, Then then)
    : m_answer(std::move(answer))
    , m_then(then)
{
    m_server.setSslConfiguration(serverConfiguration());
    QObject::connect(&m_server, &QSslServer::pendingConnectionAvailable, &m_server,
        [this] { take(qobject_cast<QSslSocket *>(m_server.nextPendingConnection())); });
    if (!m_server.listen(QHostAddress::LocalHost)) {
        qFatal("the loopback server cannot listen");
    }
}

QString LoopbackServer::root() const
{
    return QStringLiteral("https://127.0.0.1:%1/").arg(m_server.serverPort());
}

void LoopbackServer::take(QSslSocket *socket)
{
    const auto answer = [this, socket] {
        if (socket->peek(100'000).endsWith("\r\n\r\n")) {
            m_requests.append(socket->readAll());
            socket->write(m_answer);
            if (m_then == Then::Close) {
                socket->disconnectFromHost();
            }
        }
    };
    QObject::connect(socket, &QSslSocket::encryptedBytesWritten, &m_server,
        [this](qint64 bytes) { m_sent += bytes; });
    QObject::connect(socket, &QSslSocket::disconnected, &m_server, [this] { ++m_ended; });
    QObject::connect(socket, &QSslSocket::readyRead, &m_server, answer);
    answer(); // it may all have come with the handshake
}
