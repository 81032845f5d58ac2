// kestrelbay-bench-walk FOLDER...: asks the system about every file below the folders, and nothing
// else. Prints how many there are.

#define _GNU_SOURCE
#include <dirent.h>
#include <fcntl.h>
#include <stdio.h>
#include <string.h>
#include <sys/stat.h>

static long walk(int parent, const char *name)
{
    const int descriptor = openat(parent, name, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    DIR *folder = descriptor < 0 ? NULL : fdopendir(descriptor);
    if (folder == NULL) {
        return 0;
    }
    long files = 0;
    const struct dirent *entry;
    while ((entry = readdir(folder)) != NULL) {
        struct stat status;
        if (strcmp(entry->d_name, ".") == 0 || strcmp(entry->d_name, "..") == 0
            || fstatat(descriptor, entry->d_name, &status, 0) != 0) {
            continue;
        }
        files += S_ISDIR(status.st_mode) ? walk(descriptor, entry->d_name) : 1;
    }
    closedir(folder);
    return files;
}

int main(int argc, char *argv[])
{
    long files = 0;
    for (int i = 1; i < argc; ++i) {
        files += walk(AT_FDCWD, argv[i]);
    }
    return printf("%ld\n", files) < 0 || files == 0;
}
