/* A file on a disk that hangs: while "<path>.<call>" exists, that call for it blocks. "<path>.player" blocks the
   player's reads. */

#define _GNU_SOURCE
#include <errno.h>
#include <fcntl.h>
#include <stdarg.h>
#include <stdio.h>
#include <string.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

static void stall(const char *path, const char *call) {
    char mark[4096];
    snprintf(mark, sizeof mark, "%s.%s", path, call);
    while (access(mark, F_OK) == 0) {
        usleep(10000);
    }
}

int statx(int folder, const char *path, int flags, unsigned mask, struct statx *status) {
    stall(path, "statx");
    return (int)syscall(SYS_statx, folder, path, flags, mask, status);
}

ssize_t read(int descriptor, void *buffer, size_t size) {
    char link[64], path[4096] = "";
    if (strcmp(program_invocation_short_name, "kova-alarm") != 0) {
        snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
        if (readlink(link, path, sizeof path - 1) > 0) {
            stall(path, "player");
        }
    }
    return syscall(SYS_read, descriptor, buffer, size);
}

int open(const char *path, int flags, ...) {
    va_list mode;
    va_start(mode, flags);
    stall(path, "open");
    const int descriptor = (int)syscall(SYS_openat, AT_FDCWD, path, flags, va_arg(mode, unsigned));
    va_end(mode);
    return descriptor;
}

int open64(const char *path, int flags, ...) __attribute__((alias("open")));
