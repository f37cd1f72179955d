/* SPDX-FileCopyrightText: 2026 Tidewell
 * SPDX-License-Identifier: GPL-3.0-or-later
 * Loaded before the C library: lets one call of a program fail that touches the files below a folder, or starts a
 * process. Compile with -O2 and without stack protector: vfork must be left by a jump.
 *   FAULT_ROOT     the folder
 *   FAULT_PROGRAM  the program's short name; others are left alone
 *   FAULT_AT       the number of the call that fails, from 1; 0: none
 *   FAULT_ERRNO    with what
 *   FAULT_STAYS    "1": every call of the same function after it fails as well, as on a full disk
 *   FAULT_LOG      a file that gets "number function errno" of each call */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <pthread.h>
#include <spawn.h>
#include <stdarg.h>
#include <stdatomic.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/eventfd.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

static const char *root;
static int failAt, failWith, stays, logFile = -1, isActive;
static atomic_int count;
static char failed[32];

__attribute__((constructor)) static void start(void)
{
    const char *program = getenv("FAULT_PROGRAM");
    root = getenv("FAULT_ROOT");
    if (!root || !program || strcmp(program, program_invocation_short_name) != 0) return;
    failAt = atoi(getenv("FAULT_AT"));
    failWith = atoi(getenv("FAULT_ERRNO"));
    stays = getenv("FAULT_STAYS") != NULL;
    if (getenv("FAULT_LOG")) logFile = (int)syscall(SYS_open, getenv("FAULT_LOG"), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    isActive = 1;
}

static int isBelow(const char *path)
{
    return path && strncmp(path, root, strlen(root)) == 0;
}

static int isBelowAt(int folder, const char *path)
{
    char link[64], target[PATH_MAX];
    if (path && path[0] == '/' && !strstr(path, "/fd/")) return isBelow(path);
    if (path && sscanf(path, "/proc/self/fd/%d", &folder) != 1 && folder == AT_FDCWD) return 0;
    snprintf(link, sizeof link, "/proc/self/fd/%d", folder);
    const ssize_t length = readlink(link, target, sizeof target - 1);
    if (length < 0) return 0;
    target[length] = '\0';
    return isBelow(target);
}

/* Whether this call is to fail; errno says how. */
static int fails(const char *function)
{
    const int saved = errno;
    const int number = ++count;
    const int now = number == failAt || (stays && number > failAt && failAt && strcmp(function, failed) == 0);
    if (number == failAt) snprintf(failed, sizeof failed, "%s", function);
    if (logFile >= 0) dprintf(logFile, "%d %s %d\n", number, function, now ? failWith : 0);
    errno = now ? failWith : saved;
    return now;
}

#define REAL(name) ((__typeof__(&name))dlsym(RTLD_NEXT, #name))
#define WRAP(result, name, parameters, arguments, concerned) \
    result name parameters { if (isActive && (concerned) && fails(#name)) return -1; return REAL(name) arguments; }
#define ON(fd) isBelowAt(fd, NULL)

#define OPEN(name) int name(const char *path, int flags, ...) { \
    va_list list; va_start(list, flags); const mode_t mode = va_arg(list, mode_t); va_end(list); \
    return isActive && isBelowAt(AT_FDCWD, path) && fails(#name) ? -1 : REAL(name)(path, flags, mode); }
OPEN(open)
OPEN(open64)
#define OPENAT(name) int name(int folder, const char *path, int flags, ...) { \
    va_list list; va_start(list, flags); const mode_t mode = va_arg(list, mode_t); va_end(list); \
    return isActive && isBelowAt(folder, path) && fails(#name) ? -1 : REAL(name)(folder, path, flags, mode); }
OPENAT(openat)
OPENAT(openat64)
#define FOPEN(name) FILE *name(const char *path, const char *mode) { \
    return isActive && isBelowAt(AT_FDCWD, path) && fails(#name) ? NULL : REAL(name)(path, mode); }
FOPEN(fopen)
FOPEN(fopen64)

WRAP(ssize_t, write, (int fd, const void *data, size_t size), (fd, data, size), ON(fd))
WRAP(ssize_t, pwrite, (int fd, const void *data, size_t size, off_t at), (fd, data, size, at), ON(fd))
WRAP(ssize_t, pwrite64, (int fd, const void *data, size_t size, off64_t at), (fd, data, size, at), ON(fd))
WRAP(ssize_t, writev, (int fd, const struct iovec *parts, int number), (fd, parts, number), ON(fd))
WRAP(ssize_t, read, (int fd, void *data, size_t size), (fd, data, size), ON(fd))
WRAP(ssize_t, pread, (int fd, void *data, size_t size, off_t at), (fd, data, size, at), ON(fd))
WRAP(ssize_t, pread64, (int fd, void *data, size_t size, off64_t at), (fd, data, size, at), ON(fd))
WRAP(ssize_t, sendfile, (int out, int in, off_t *at, size_t size), (out, in, at, size), ON(out))
WRAP(ssize_t, sendfile64, (int out, int in, off64_t *at, size_t size), (out, in, at, size), ON(out))
WRAP(ssize_t, copy_file_range, (int in, off64_t *from, int out, off64_t *to, size_t size, unsigned flags), (in, from, out, to, size, flags), ON(out))
WRAP(int, ftruncate, (int fd, off_t size), (fd, size), ON(fd))
WRAP(int, ftruncate64, (int fd, off64_t size), (fd, size), ON(fd))
WRAP(int, fsync, (int fd), (fd), ON(fd))
WRAP(int, fdatasync, (int fd), (fd), ON(fd))
WRAP(int, syncfs, (int fd), (fd), ON(fd))
WRAP(int, fchmod, (int fd, mode_t mode), (fd, mode), ON(fd))
WRAP(int, rename, (const char *from, const char *to), (from, to), isBelow(to))
WRAP(int, renameat, (int a, const char *from, int b, const char *to), (a, from, b, to), isBelowAt(b, to))
WRAP(int, renameat2, (int a, const char *from, int b, const char *to, unsigned flags), (a, from, b, to, flags), isBelowAt(b, to))
WRAP(int, link, (const char *from, const char *to), (from, to), isBelow(to))
WRAP(int, linkat, (int a, const char *from, int b, const char *to, int flags), (a, from, b, to, flags), isBelowAt(b, to))
WRAP(int, symlink, (const char *target, const char *path), (target, path), isBelow(path))
WRAP(int, unlink, (const char *path), (path), isBelow(path))
WRAP(int, unlinkat, (int folder, const char *path, int flags), (folder, path, flags), isBelowAt(folder, path))
WRAP(int, rmdir, (const char *path), (path), isBelow(path))
WRAP(int, mkdir, (const char *path, mode_t mode), (path, mode), isBelow(path))
WRAP(int, utimensat, (int folder, const char *path, const struct timespec times[2], int flags), (folder, path, times, flags), isBelowAt(folder, path))
WRAP(int, futimens, (int fd, const struct timespec times[2]), (fd, times), ON(fd))
WRAP(int, stat, (const char *path, struct stat *status), (path, status), isBelow(path))
WRAP(int, stat64, (const char *path, struct stat64 *status), (path, status), isBelow(path))
WRAP(int, lstat, (const char *path, struct stat *status), (path, status), isBelow(path))
WRAP(int, lstat64, (const char *path, struct stat64 *status), (path, status), isBelow(path))
WRAP(int, fstat, (int fd, struct stat *status), (fd, status), ON(fd))
WRAP(int, fstat64, (int fd, struct stat64 *status), (fd, status), ON(fd))
WRAP(int, pipe2, (int ends[2], int flags), (ends, flags), 1)
WRAP(int, eventfd, (unsigned value, int flags), (value, flags), 1)
WRAP(pid_t, fork, (void), (), 1)

int pthread_create(pthread_t *thread, const pthread_attr_t *attributes, void *(*body)(void *), void *argument)
{
    if (isActive && fails("pthread_create")) return EAGAIN; /* it knows no other */
    return REAL(pthread_create)(thread, attributes, body, argument);
}

char *mkdtemp(char *path)
{
    if (isActive && isBelow(path) && fails("mkdtemp")) return NULL;
    return REAL(mkdtemp)(path);
}

int posix_spawn(pid_t *pid, const char *path, const posix_spawn_file_actions_t *actions, const posix_spawnattr_t *attributes, char *const argv[], char *const environment[])
{
    if (isActive && fails("posix_spawn")) return errno;
    return REAL(posix_spawn)(pid, path, actions, attributes, argv, environment);
}

/* The child must not return into a frame of ours. */
pid_t vfork(void)
{
    static pid_t (*real)(void);
    if (!real) real = (pid_t(*)(void))dlsym(RTLD_NEXT, "vfork");
    if (isActive && fails("vfork")) return -1;
    return real();
}
