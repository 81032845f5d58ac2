#pragma once

#include <chrono>
#include <optional>
#include <QByteArray>
#include <QFuture>
#include <QNetworkRequest>
#include <QObject>
#include <QPromise>

class QNetworkReply;

/// What a server has answered.
struct HttpReply {
    int status = 0;
    QByteArray body; ///< empty when it is larger than HttpGet::largestBody

    bool operator==(const HttpReply &) const = default;
};

/// One GET over HTTPS that leaves no trace: no cookies, no cache, and no redirect is followed, so
/// that no header of it ever goes to another host.
///
/// It belongs to its parent and deletes itself when it is done; when the parent goes first, the
/// transfer ends and the future is cancelled.
class HttpGet final : public QObject {
    Q_OBJECT

public:
    static constexpr qint64 largestBody = 1'000'000;

    struct Patience {
        std::chrono::milliseconds idle;  ///< without anything arriving
        std::chrono::milliseconds whole; ///< from beginning to end
    };

    /// Starts it. The future holds nothing when there was no answer over HTTPS.
    [[nodiscard]] static QFuture<std::optional<HttpReply>> start(
        QNetworkRequest request, Patience patience, QObject *parent);

    ~HttpGet() override;
    Q_DISABLE_COPY_MOVE(HttpGet)

private:
    using Result = std::optional<HttpReply>;

    explicit HttpGet(QObject *parent);
    void send(const QNetworkRequest &request, Patience patience);
    void checkSize();
    void finish();

    QPromise<Result> m_promise;
    QNetworkReply *m_reply = nullptr;
    bool m_tooLarge = false;
};
