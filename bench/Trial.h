#pragma once

#include <QString>
#include <QStringList>

/// What one run of a program took.
struct Cost {
    double time = 0;   ///< milliseconds, from its start to its end
    double memory = 0; ///< megabytes, at the most
};

/// Transcripts to measure with, and what the indexer makes of them.
class Trial final {
public:
    /// Makes the transcripts if they are not there yet; `figures` are arguments of
    /// kestrelbay-bench-home.
    Trial(const QString &name, const QStringList &figures);
    /// Takes back what was added.
    ~Trial();
    Trial(const Trial &) = delete;
    Trial &operator=(const Trial &) = delete;

    /// Of all transcripts together.
    [[nodiscard]] double megabytes() const;
    /// What the indexer wrote last.
    [[nodiscard]] QByteArray statistics() const;

    void forget();
    /// Lets the one session grow that is meant to.
    void grow(qint64 bytes);

    // These end the whole program when the one that they run fails.
    Cost index();
    Cost cat();
    Cost walk();

private:
    [[nodiscard]] QString growingFile() const;

    QString m_folder;
    QStringList m_files;
    qint64 m_bytes = 0;
    qint64 m_sizeBefore = 0; ///< of the session that grows
    qint64 m_grown = 0;
};
