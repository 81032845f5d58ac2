#include "usage/lines/ByteSource.h"

#include "usage/values/HashOf.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <new>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>
#include <zstd.h>

namespace usage {

namespace {

// What unpacks to more than both was not written by an assistant.
constexpr std::size_t mostOfAnyFile = std::size_t {64} << 20U;
constexpr std::size_t mostGrowth = 1000;
/// Longer than any two transcripts agree at one place by chance: each line has a time and an id.
constexpr std::size_t guardSize = 4096;

} // namespace

/// A stream of zstd frames, with the bytes that it has not taken yet.
class ByteSource::Decompressor final {
public:
    Decompressor()
        : m_stream(ZSTD_createDStream())
        , m_buffer(ZSTD_DStreamInSize())
    {
        if (m_stream == nullptr) {
            throw std::bad_alloc();
        }
    }
    ~Decompressor() { ZSTD_freeDStream(m_stream); }
    Decompressor(const Decompressor &) = delete;
    Decompressor &operator=(const Decompressor &) = delete;

    void restart()
    {
        ZSTD_DCtx_reset(m_stream, ZSTD_reset_session_only);
        m_input = {};
        m_wanted = 0;
    }

    [[nodiscard]] bool isHungry() const { return m_input.pos == m_input.size; }
    /// Whether a frame has begun and not ended.
    [[nodiscard]] bool isInsideFrame() const { return m_wanted != 0; }
    [[nodiscard]] std::vector<char> &buffer() { return m_buffer; }
    void feed(std::size_t bytes) { m_input = {m_buffer.data(), bytes, 0}; }

    /// The bytes written to the target, nothing when the stream is damaged.
    [[nodiscard]] std::optional<std::size_t> write(char *target, std::size_t most)
    {
        if (m_wanted == 0 && isHungry()) {
            return 0; // between frames, where there is nothing to ask the decoder for
        }
        ZSTD_outBuffer output {target, most, 0};
        m_wanted = ZSTD_decompressStream(m_stream, &output, &m_input);
        return ZSTD_isError(m_wanted) != 0 ? std::nullopt : std::optional(output.pos);
    }

private:
    ZSTD_DStream *m_stream;
    std::vector<char> m_buffer;
    ZSTD_inBuffer m_input {};
    std::size_t m_wanted = 0;
};

ByteSource::ByteSource() = default;

ByteSource::~ByteSource()
{
    close();
}

std::optional<FileSkip> ByteSource::open(const std::filesystem::path &file)
{
    close();
    m_descriptor = ::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (m_descriptor < 0) {
        return errno == ELOOP ? FileSkip::Loop : FileSkip::Unreadable;
    }
    struct stat status { };
    if (fstat(m_descriptor, &status) != 0) {
        close();
        return FileSkip::Unreadable;
    }
    if (!S_ISREG(status.st_mode)) {
        close();
        return FileSkip::NotRegular;
    }
    m_identity = FileIdentity::of(status);
    m_unread = static_cast<std::size_t>(status.st_size);
    m_room = std::max(mostOfAnyFile, m_unread * mostGrowth);
    m_isCompressed = file.extension() == ".zst";
    if (m_isCompressed) {
        if (m_decompressor == nullptr) {
            m_decompressor = std::make_unique<Decompressor>();
        }
        m_decompressor->restart();
    }
    return std::nullopt;
}

std::optional<std::uint64_t> ByteSource::guardBefore(std::uint64_t place) const
{
    const std::size_t size = std::min<std::uint64_t>(place, guardSize);
    std::string bytes(size, '\0');
    std::size_t got = 0;
    while (got < size) {
        const ssize_t part = ::pread(
            m_descriptor, bytes.data() + got, size - got, static_cast<off_t>(place - size + got));
        if (part <= 0 && !(part < 0 && errno == EINTR)) {
            return std::nullopt;
        }
        got += static_cast<std::size_t>(std::max<ssize_t>(part, 0));
    }
    return hashOf(bytes);
}

bool ByteSource::skipTo(std::uint64_t place)
{
    if (place > m_identity.size || ::lseek(m_descriptor, static_cast<off_t>(place), SEEK_SET) < 0) {
        return false;
    }
    m_unread = static_cast<std::size_t>(m_identity.size - place);
    return true;
}

std::optional<std::size_t> ByteSource::read(char *target, std::size_t most)
{
    return m_isCompressed ? readDecompressed(target, most) : readRaw(target, most);
}

std::optional<std::size_t> ByteSource::readRaw(char *target, std::size_t most)
{
    if (m_unread == 0 || m_descriptor < 0) {
        return 0;
    }
    ssize_t got = 0;
    do {
        got = ::read(m_descriptor, target, std::min(most, m_unread));
    } while (got < 0 && errno == EINTR);
    if (got <= 0) {
        m_unread = 0;
        return got < 0 ? std::nullopt : std::optional<std::size_t>(0);
    }
    m_unread -= static_cast<std::size_t>(got);
    return static_cast<std::size_t>(got);
}

std::optional<std::size_t> ByteSource::readDecompressed(char *target, std::size_t most)
{
    for (;;) {
        // What is already inside comes first: one piece of input may give many of output.
        const auto written = m_decompressor->write(target, most);
        if (written && *written > m_room) {
            return std::nullopt;
        }
        if (!written || *written > 0) {
            m_room -= written.value_or(0);
            return written;
        }
        if (!m_decompressor->isHungry()) {
            continue;
        }
        std::vector<char> &buffer = m_decompressor->buffer();
        const auto got = readRaw(buffer.data(), buffer.size());
        if (!got) {
            return std::nullopt;
        }
        if (*got == 0) {
            // An end in the middle of a frame: the rest of the file is missing.
            return m_decompressor->isInsideFrame() ? std::nullopt : std::optional<std::size_t>(0);
        }
        m_decompressor->feed(*got);
    }
}

void ByteSource::close()
{
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
    }
    m_descriptor = -1;
    m_unread = 0;
    m_isCompressed = false;
}

} // namespace usage
