// Compressed rollouts: damaged ones, and sound ones in any number of frames.

#include "formats/Folders.h"
#include "InputFile.h"
#include "require.h"
#include "requireOwnHome.h"
#include "usage/files/SafeFile.h"
#include "usage/lines/LineReader.h"

#include <algorithm>
#include <string>
#include <vector>
#include <zstd.h>

namespace {

using Texts = std::vector<std::string>;

/// What the file held, as far as it could be read.
struct Held {
    Texts lines;
    bool isWhole = false;
};

/// What it unpacks to, up to a limit.
struct Unpacked {
    std::string text;
    bool isWhole = false;
    bool isLarge = false;
};

constexpr std::size_t large = std::size_t {1} << 20U;
/// No file as small as ours may unpack to more.
constexpr std::size_t largest = std::size_t {64} << 20U;

Texts linesOf(std::string_view text)
{
    Texts lines;
    if (text.find('\n') != std::string_view::npos && text.starts_with("\xEF\xBB\xBF")) {
        text.remove_prefix(3);
    }
    for (auto end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    return lines;
}

class Target final {
public:
    Target()
        : m_name(Folders::data() / "input.zst")
    {
        requireOwnHome();
        require(!usage::makeFolder(m_name.parent_path()));
        std::filesystem::create_symlink(m_input.path(), m_name);
    }

    void run(std::string_view input)
    {
        const Held held = read(input);
        if (const Unpacked unpacked = unpack(input); !unpacked.isLarge) {
            const Texts lines = linesOf(unpacked.text);
            require(held.isWhole == unpacked.isWhole);
            require(held.lines.size() == lines.size() || !held.isWhole);
            require(held.lines.size() <= lines.size());
            require(std::equal(held.lines.begin(), held.lines.end(), lines.begin()));
        }
        const std::string sound = inFrames(input);
        const Held back = read(sound);
        require(back.isWhole && back.lines == linesOf(input));
        require(!read(std::string_view(sound).substr(0, sound.size() - 1)).isWhole);
    }

private:
    Held read(std::string_view bytes)
    {
        m_input.write(bytes);
        require(!m_reader.open(m_name));
        Held held;
        std::size_t size = 0;
        while (const auto line = m_reader.next()) {
            size += line->size();
            require(line->size() <= usage::LineReader::longestLine && size <= largest);
            if (size <= large) {
                held.lines.emplace_back(*line);
            }
        }
        held.isWhole = !m_reader.failed();
        return held;
    }

    Unpacked unpack(std::string_view bytes)
    {
        Unpacked unpacked;
        ZSTD_DCtx_reset(m_decompressor, ZSTD_reset_session_only);
        ZSTD_inBuffer in {bytes.data(), bytes.size(), 0};
        ZSTD_outBuffer out {m_room.data(), m_room.size(), 0};
        std::size_t wanted = 0;
        while (in.pos < in.size && out.pos < out.size && ZSTD_isError(wanted) == 0) {
            wanted = ZSTD_decompressStream(m_decompressor, &out, &in);
        }
        unpacked.text = m_room.substr(0, out.pos);
        unpacked.isLarge = out.pos == out.size;
        unpacked.isWhole = wanted == 0;
        return unpacked;
    }

    /// One to three of them.
    std::string inFrames(std::string_view text)
    {
        const std::size_t piece = text.size() / (text.size() % 3 + 1) + 1;
        std::string frames;
        do {
            const std::string_view part = text.substr(0, piece);
            text.remove_prefix(part.size());
            std::string frame(ZSTD_compressBound(part.size()), '\0');
            const std::size_t size = ZSTD_compressCCtx(
                m_compressor, frame.data(), frame.size(), part.data(), part.size(), 1);
            require(ZSTD_isError(size) == 0);
            frames.append(frame, 0, size);
        } while (!text.empty());
        return frames;
    }

    InputFile m_input;
    std::filesystem::path m_name;
    usage::LineReader m_reader;
    ZSTD_CCtx *m_compressor = ZSTD_createCCtx();
    ZSTD_DCtx *m_decompressor = ZSTD_createDCtx();
    std::string m_room = std::string(large, '\0');
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const char *data, std::size_t size)
{
    static Target target;
    target.run({data, size});
    return 0;
}
