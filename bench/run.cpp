// kestrelbay-bench-run COMMAND...: runs a command without its output and prints how long it took in
// milliseconds and the most memory it had in kilobytes.
//
// A program of its own because a process begins with the peak memory of the one that starts it.

#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

double now()
{
    timespec time {};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc < 2) {
        std::fputs("usage: kestrelbay-bench-run COMMAND...\n", stderr);
        return 2;
    }
    posix_spawn_file_actions_t silence {};
    posix_spawn_file_actions_init(&silence);
    posix_spawn_file_actions_addopen(&silence, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);

    const double begin = now();
    pid_t child = 0;
    int status = 0;
    rusage used {};
    if (posix_spawnp(&child, argv[1], &silence, nullptr, argv + 1, environ) != 0
        || wait4(child, &status, 0, &used) != child) {
        std::perror(argv[1]);
        return 1;
    }
    const double end = now();
    posix_spawn_file_actions_destroy(&silence);
    std::printf("%.3f %ld\n", end - begin, used.ru_maxrss);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}
