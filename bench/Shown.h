#pragma once

#include <chrono>
#include <QHash>
#include <QProcess>
#include <QStringList>

/// A program with a window on the display: started as by hand, and ended with this.
///
/// When it does not do what it has to, the whole measurement ends with a line.
class Shown final {
public:
    /// What Qt says of each frame is listened to only on request, because it takes time to say.
    enum class Frames { Unheard, Heard };
    explicit Shown(const QStringList &command, Frames frames = Frames::Unheard);
    ~Shown();
    Q_DISABLE_COPY_MOVE(Shown)

    struct Times {
        double wall = 0;      ///< milliseconds since the start
        double processor = 0; ///< milliseconds that all of its threads have been running
    };
    /// Waits for the first frame to be drawn and handed to the window system.
    [[nodiscard]] Times firstFrame();

    /// In megabytes.
    struct Memory {
        double resident = 0;
        double proportional = 0; ///< of what it shares with other programs only its part
    };
    [[nodiscard]] Memory memory() const;

    /// How often its threads wake up while it is let be for this long.
    [[nodiscard]] qint64 wakeUps(std::chrono::milliseconds length);

    /// Lets it be for this long; it has to live on.
    void rest(std::chrono::milliseconds length);

private:
    [[nodiscard]] QHash<QString, qint64> sleeps() const;

    QProcess m_process;
    double m_start = 0; ///< milliseconds of the monotonic clock
};
