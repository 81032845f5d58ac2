#include "sources/HttpGet.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>

namespace {

/// What would tell more than the question itself is kept back.
void keepNothing(QNetworkRequest &request)
{
    request.setRawHeader("Accept-Language", "*");
    request.setRawHeader("User-Agent", "Kestrelbay");
    request.setAttribute(
        QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(
        QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
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
    m_reply = session->get(request);
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
    const QVariant status =
        m_reply ? m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute) : QVariant();
    // A status alone is no answer: the connection may have broken in the middle of the body.
    const bool whole = m_reply && m_reply->error() != QNetworkReply::OperationCanceledError
        && m_reply->error() != QNetworkReply::RemoteHostClosedError
        && m_reply->error() != QNetworkReply::TimeoutError;
    if (status.isValid() && (whole || m_tooLarge)) {
        result = HttpReply {status.toInt(), m_tooLarge ? QByteArray() : m_reply->readAll()};
    }
    m_promise.addResult(result);
    m_promise.finish();
    deleteLater();
}

#include "moc_HttpGet.cpp"
