#include "support/FailingCalls.hpp"

#include "support/Interposer.hpp"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <netdb.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

thread_local long untilFailure = -1; // -1: none fails
thread_local int failureError = 0;
thread_local bool isShort = false;
thread_local bool hasFailed = false;
thread_local const char* failedCall = "";
thread_local long callsMade = 0;

/** The size that a call may transfer. */
std::size_t transferred(std::size_t size) {
    if (!isShort || size <= 1)
        return size;
    hasFailed = true;
    return 1;
}

bool isPolledPipe(int descriptor) {
    struct stat status;
    return ::fstat(descriptor, &status) == 0 && S_ISFIFO(status.st_mode) &&
           (::fcntl(descriptor, F_GETFL) & O_NONBLOCK) != 0;
}

} // namespace

namespace support::calls {

bool fails(const char* name) {
    ++callsMade;
    if (untilFailure < 0 || untilFailure-- > 0)
        return false;
    hasFailed = true;
    failedCall = name;
    errno = failureError;
    return true;
}

} // namespace support::calls

using support::calls::fails;
using support::calls::next;

INTERPOSE(int, socket, (int domain, int type, int protocol), noexcept, -1, (domain, type, protocol))
INTERPOSE(int, connect, (int socket, const sockaddr* address, socklen_t size), , -1, (socket, address, size))
INTERPOSE(int, setsockopt, (int socket, int level, int name, const void* value, socklen_t size), noexcept, -1,
          (socket, level, name, value, size))
INTERPOSE(int, getaddrinfo, (const char* host, const char* port, const addrinfo* hints, addrinfo** result), ,
          EAI_SYSTEM, (host, port, hints, result))
INTERPOSE(int, pipe2, (int* ends, int flags), noexcept, -1, (ends, flags))
INTERPOSE(pid_t, waitpid, (pid_t process, int* status, int options), , -1, (process, status, options))
INTERPOSE(int, posix_spawn,
          (pid_t * process, const char* path, const posix_spawn_file_actions_t* actions,
           const posix_spawnattr_t* attributes, char* const* arguments, char* const* environment),
          , failureError, (process, path, actions, attributes, arguments, environment))
INTERPOSE(pid_t, fork, (), noexcept, -1, ())
INTERPOSE(int, bind, (int socket, const sockaddr* address, socklen_t size), noexcept, -1,
          (socket, address, size))
INTERPOSE(int, listen, (int socket, int count), noexcept, -1, (socket, count))
INTERPOSE(int, chmod, (const char* path, mode_t mode), noexcept, -1, (path, mode))
INTERPOSE(int, rename, (const char* path, const char* other), noexcept, -1, (path, other))
INTERPOSE(int, unlink, (const char* path), noexcept, -1, (path))
INTERPOSE(int, fsync, (int descriptor), , -1, (descriptor))
INTERPOSE(int, lstat64, (const char* path, struct stat64* status), noexcept, -1, (path, status))
INTERPOSE(int, fstat64, (int descriptor, struct stat64* status), noexcept, -1, (descriptor, status))
INTERPOSE(ssize_t, readlink, (const char* path, char* buffer, std::size_t size), noexcept, -1,
          (path, buffer, size))
INTERPOSE(DIR*, opendir, (const char* path), , nullptr, (path))
INTERPOSE(dirent64*, readdir64, (DIR * directory), , nullptr, (directory))
INTERPOSE(ssize_t, recv, (int socket, void* buffer, std::size_t size, int flags), , -1,
          (socket, buffer, transferred(size), flags))
INTERPOSE(ssize_t, send, (int socket, const void* buffer, std::size_t size, int flags), , -1,
          (socket, buffer, transferred(size), flags))

// A program may drop a message that it cannot write, but tests wait for messages: never fail this poll.
extern "C" __attribute__((visibility("default"))) int poll(pollfd* descriptors, nfds_t count, int timeout) {
    static const auto real = next<int(pollfd*, nfds_t, int)>("poll");
    const bool isForMessage = count == 1 && descriptors->fd == STDERR_FILENO;
    return !isForMessage && fails("poll") ? -1 : real(descriptors, count, timeout);
}

extern "C" __attribute__((visibility("default"))) int open64(const char* path, int flags, ...) {
    static const auto real = next<int(const char*, int, ...)>("open64");
    va_list values;
    va_start(values, flags);
    const int mode = va_arg(values, int); // without a mode, any number
    va_end(values);
    return fails("open64") ? -1 : real(path, flags, mode);
}

extern "C" __attribute__((visibility("default"))) ssize_t write(int descriptor, const void* buffer,
                                                                std::size_t size) {
    static const auto real = next<ssize_t(int, const void*, std::size_t)>("write");
    return !isPolledPipe(descriptor) && fails("write") ? -1 : real(descriptor, buffer, transferred(size));
}

// The only error of a non-blocking pipe is EAGAIN, pipe(7).
extern "C" __attribute__((visibility("default"))) ssize_t read(int descriptor, void* buffer,
                                                               std::size_t size) {
    static const auto real = next<ssize_t(int, void*, std::size_t)>("read");
    return !isPolledPipe(descriptor) && fails("read") ? -1 : real(descriptor, buffer, transferred(size));
}

// close(2) releases the descriptor even when it fails.
extern "C" __attribute__((visibility("default"))) int close(int descriptor) {
    static const auto real = next<int(int)>("close");
    const int result = real(descriptor);
    return fails("close") ? -1 : result;
}

namespace support::calls {

void failAt(long n, int error) {
    hasFailed = false;
    failedCall = "";
    untilFailure = n;
    failureError = error;
}

void transferSingleBytes() {
    hasFailed = false;
    isShort = true;
}

bool stopFailing() {
    untilFailure = -1;
    isShort = false;
    return hasFailed;
}

const char* failed() {
    return failedCall;
}

long made() {
    return callsMade;
}

} // namespace support::calls
