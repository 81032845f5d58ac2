#include "usage/reading/ParallelReader.h"

#include "usage/reading/FileReader.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>

namespace usage {

namespace {

/// Less is read sooner than threads are started.
constexpr std::uint64_t worthThreads = std::uint64_t {4} << 20U;
/// Each has its buffers, and more do not read faster from one disk.
constexpr unsigned mostThreads = 4;
/// So many pieces may wait; who is ahead of the taker waits too.
constexpr std::size_t mostWaiting = 4;
constexpr std::chrono::milliseconds betweenTellings {100};

std::uint64_t bytesOf(const FileTask &task)
{
    const std::uint64_t done = task.from ? task.from->place : 0;
    return task.size > done ? task.size - done : 0;
}

std::uint64_t bytesOf(const std::vector<FileTask> &tasks)
{
    std::uint64_t sum = 0;
    for (const FileTask &task : tasks) {
        sum += bytesOf(task);
    }
    return sum;
}

/// Pieces on their way from the reading threads to the one that takes them.
class PieceQueue final {
public:
    /// A reader begins.
    void enter()
    {
        const std::lock_guard lock(m_mutex);
        ++m_readers;
    }
    /// Waits while there is no room; false when nobody wants any more.
    [[nodiscard]] bool put(FilePiece &&piece)
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_isClosed || m_pieces.size() < mostWaiting; });
        if (m_isClosed) {
            return false;
        }
        m_pieces.push_back(std::move(piece));
        m_changed.notify_all();
        return true;
    }
    /// A reader has ended.
    void leave()
    {
        const std::lock_guard lock(m_mutex);
        --m_readers;
        m_changed.notify_all();
    }
    void close()
    {
        const std::lock_guard lock(m_mutex);
        m_isClosed = true;
        m_pieces.clear();
        m_changed.notify_all();
    }
    /// Waits a moment; nothing when there was none, or will be none.
    [[nodiscard]] std::optional<FilePiece> take()
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait_for(
            lock, betweenTellings, [this] { return !m_pieces.empty() || m_readers == 0; });
        if (m_pieces.empty()) {
            return std::nullopt;
        }
        FilePiece piece = std::move(m_pieces.front());
        m_pieces.pop_front();
        m_changed.notify_all();
        return piece;
    }
    [[nodiscard]] bool isDone()
    {
        const std::lock_guard lock(m_mutex);
        return m_pieces.empty() && m_readers == 0;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<FilePiece> m_pieces;
    unsigned m_readers = 0;
    bool m_isClosed = false;
};

/// Has a reader leave also when it runs out of memory.
class Leaving final {
public:
    explicit Leaving(PieceQueue &belt)
        : m_belt(belt)
    {
    }
    ~Leaving() { m_belt.leave(); }
    Leaving(const Leaving &) = delete;
    Leaving &operator=(const Leaving &) = delete;

private:
    PieceQueue &m_belt;
};

/// Has nobody wait for a taker that is gone.
class Closing final {
public:
    explicit Closing(PieceQueue &belt)
        : m_belt(belt)
    {
    }
    ~Closing() { m_belt.close(); }
    Closing(const Closing &) = delete;
    Closing &operator=(const Closing &) = delete;

private:
    PieceQueue &m_belt;
};

/// Starts as many readers as are worth it, or as the system has threads for.
template <typename Read>
void start(std::vector<std::future<Skips>> &readers, PieceQueue &belt, Read &read)
{
    for (unsigned i = std::clamp(std::thread::hardware_concurrency(), 2U, mostThreads); i > 0;
         --i) {
        belt.enter();
        try {
            readers.push_back(std::async(std::launch::async, std::ref(read)));
        } catch (const std::system_error &) {
            belt.leave();
            return;
        }
    }
}

} // namespace

ParallelReader::ParallelReader(TimePoint now, ProgressTold progress)
    : m_now(now)
    , m_progress(std::move(progress))
{
}

void ParallelReader::read(const std::vector<FileTask> &tasks, const Take &take)
{
    if (tasks.size() < 2 || bytesOf(tasks) < worthThreads) {
        readAlone(tasks, take);
    } else {
        readTogether(tasks, take);
    }
}

void ParallelReader::tell(std::uint64_t done, std::uint64_t all) const
{
    if (m_progress) {
        m_progress(done, all);
    }
}

void ParallelReader::readAlone(const std::vector<FileTask> &tasks, const Take &take)
{
    LongLineParsers longLines;
    bool isWanted = true;
    FileReader reading(m_now, longLines, [&](FilePiece &&piece) {
        isWanted = take(std::move(piece));
        return isWanted;
    });
    const std::uint64_t all = bytesOf(tasks);
    std::uint64_t done = 0;
    for (auto task = tasks.begin(); task != tasks.end() && isWanted; ++task) {
        if (const auto problem = reading.read(*task)) {
            m_skips.add(*problem);
        }
        done += bytesOf(*task);
        tell(done, all);
    }
}

void ParallelReader::readTogether(const std::vector<FileTask> &tasks, const Take &take)
{
    LongLineParsers longLines;
    PieceQueue belt;
    std::atomic<std::size_t> next {0};
    std::atomic<std::uint64_t> done {0};
    const auto read = [&] {
        const Leaving leaving(belt);
        Skips skips;
        FileReader reading(
            m_now, longLines, [&](FilePiece &&piece) { return belt.put(std::move(piece)); });
        for (std::size_t i = next++; i < tasks.size(); i = next++) {
            if (const auto problem = reading.read(tasks[i])) {
                skips.add(*problem);
            }
            done += bytesOf(tasks[i]);
        }
        return skips;
    };
    std::vector<std::future<Skips>> readers;
    const Closing closing(belt); // before the readers are waited for, whatever happens here
    start(readers, belt, read);
    if (readers.empty()) {
        readAlone(tasks, take);
        return;
    }
    const std::uint64_t all = bytesOf(tasks);
    while (!belt.isDone()) {
        auto piece = belt.take();
        if (piece && !take(std::move(*piece))) {
            next = tasks.size();
            belt.close();
        }
        tell(done, all);
    }
    for (auto &reader : readers) {
        m_skips.add(reader.get());
    }
}

} // namespace usage
