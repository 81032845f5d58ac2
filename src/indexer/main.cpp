#include "indexer/CommandLine.h"
#include "indexer/Program.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <exception>
#include <new>
#include <sys/stat.h>

namespace {

bool print(std::FILE *stream, const std::string &text)
{
    return std::fwrite(text.data(), 1, text.size(), stream) == text.size()
        && std::fflush(stream) == 0;
}

int runProgram(int count, char **words)
{
    const auto now =
        std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
    const auto parsed = indexer::parseCommandLine(count, words, now);
    indexer::Outcome outcome;
    if (const auto *end = std::get_if<indexer::EarlyEnd>(&parsed)) {
        (end->status == 0 ? outcome.output : outcome.messages) = end->text;
        outcome.status = end->status;
    } else {
        outcome = indexer::run(std::get<indexer::Options>(parsed), now);
    }
    if (!print(stdout, outcome.output) && errno != EPIPE) { // whoever has read enough may go
        outcome.messages = "kestrelbay-indexer: cannot write to standard output\n";
        outcome.status = 1;
    }
    print(stderr, outcome.messages);
    return outcome.status;
}

} // namespace

int main(int count, char **words)
{
    // A limit on file sizes is a failed write like any other, not a reason to die half-way.
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN); // nor is a reader that went away
    ::umask(S_IRWXG | S_IRWXO);    // what is made here is for the user, and for the user alone
    try {
        return runProgram(count, words);
    } catch (const std::bad_alloc &) {
        print(stderr, "kestrelbay-indexer: out of memory\n");
    } catch (const std::exception &error) {
        print(stderr, std::string("kestrelbay-indexer: ") + error.what() + '\n');
    }
    return 1;
}
