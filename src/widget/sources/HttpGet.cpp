#include "widget/sources/HttpGet.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>

namespace {

constexpr int firstBeyondSuccess = 300;

/// The body of a question: none, and none that could be sent once more. A GET of its own Qt would
/// silently repeat, up to three times, when the server closes the connection without an answer;
/// what it cannot rewind it does not repeat.
class NoBody final : public QIODevice {
public:
    explicit NoBody(QObject *parent)
        : QIODevice(parent)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    [[nodiscard]] bool isSequential() const override { return true; }
    bool reset() override { return false; }

protected:
    qint64 readData(char * /*data*/, qint64 /*most*/) override { return -1; }
    qint64 writeData(const char * /*data*/, qint64 /*size*/) override { return -1; }
};

/// Sends a body as it comes, so that Qt holds no copy that it could send again.
void sendOnce(QNetworkRequest &request)
{
    request.setHeader(QNetworkRequest::ContentLengthHeader, 0);
    request.setAttribute(QNetworkRequest::DoNotBufferUploadDataAttribute, true);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
}

/// What would tell more than the question itself is kept back.
void keepNothing(QNetworkRequest &request)
{
    request.setRawHeader("Accept-Language", "*");
    request.setRawHeader("User-Agent", "Kestrelbay");
    // Qt would not notice that a compressed body breaks off.
    request.setRawHeader("Accept-Encoding", "identity");
    request.setAttribute(
        QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(
        QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
}

int statusOf(const QNetworkReply &reply)
{
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

/// Whether a reply has come to its end. A status alone is none: the connection may have broken in
/// the middle of the body, or the body be such that its end cannot be told.
bool isWhole(const QNetworkReply &reply)
{
    const int status = statusOf(reply);
    const bool plain = !reply.hasRawHeader("Content-Encoding")
        || reply.rawHeader("Content-Encoding").trimmed().toLower() == "identity";
    if (status < firstBeyondSuccess) {
        return status > 0 && plain && reply.error() == QNetworkReply::NoError;
    }
    // For Qt most of these are errors by themselves.
    return reply.error() != QNetworkReply::OperationCanceledError
        && reply.error() != QNetworkReply::RemoteHostClosedError
        && reply.error() != QNetworkReply::TimeoutError;
}

} // namespace

QFuture<std::optional<HttpReply>> HttpGet::start(
    QNetworkRequest request, Patience patience, QObject *parent)
{
    auto *const get = new HttpGet(parent);
    QFuture<Result> future = get->m_promise.future();
    get->m_promise.start();
    if (request.url().scheme() == u"https") {
        keepNothing(request);
        sendOnce(request);
        get->send(request, patience);
    } else {
        get->finish();
    }
    return future;
}

HttpGet::HttpGet(QObject *parent)
    : QObject(parent)
{
}

HttpGet::~HttpGet()
{
    if (m_reply) {
        m_reply->disconnect(this);
        m_reply->abort();
    }
}

void HttpGet::send(const QNetworkRequest &request, Patience patience)
{
    auto *const session = new QNetworkAccessManager(this);
    session->setTransferTimeout(static_cast<int>(patience.idle.count()));
    m_reply = session->sendCustomRequest(request, "GET", new NoBody(this));
    // Beyond this the rest stays with the server.
    m_reply->setReadBufferSize(largestBody + 1);
    connect(m_reply, &QIODevice::readyRead, this, &HttpGet::checkSize);
    connect(m_reply, &QNetworkReply::finished, this, &HttpGet::finish);
    QTimer::singleShot(patience.whole, m_reply, &QNetworkReply::abort);
}

void HttpGet::checkSize()
{
    if (m_reply->bytesAvailable() > largestBody) {
        m_tooLarge = true;
        m_reply->abort();
    }
}

void HttpGet::finish()
{
    Result result;
    if (m_reply && (m_tooLarge || isWhole(*m_reply))) {
        result = HttpReply {statusOf(*m_reply), m_tooLarge ? QByteArray() : m_reply->readAll()};
    }
    m_promise.addResult(result);
    m_promise.finish();
    deleteLater();
}

#include "moc_HttpGet.cpp"
