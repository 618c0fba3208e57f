// For LD_PRELOAD: fails one system call of an unchanged program's first thread. FAIL_CALL is the index of the
// call, from 0, or -1 for none; FAIL_ERROR is the error number. If FAIL_SINCE_CONNECTION is set, the first
// call is the one after the first connection. At its end the program writes the number of its calls and the
// name of the failed one to the file FAIL_COUNT.
#include "support/FailingCalls.hpp"
#include "support/Interposer.hpp"

#include <cstdlib>
#include <fstream>
#include <sys/epoll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

long numberOf(const char* variable) {
    const char* const text = std::getenv(variable);
    return text != nullptr ? std::atol(text) : -1;
}

bool awaitsConnection = false;
long callsBefore = 0; // the first call that counts

void failAsAsked() {
    callsBefore = support::calls::made();
    support::calls::failAt(numberOf("FAIL_CALL"), static_cast<int>(numberOf("FAIL_ERROR")));
}

__attribute__((constructor)) void begin() {
    awaitsConnection = std::getenv("FAIL_SINCE_CONNECTION") != nullptr;
    if (!awaitsConnection)
        failAsAsked();
}

__attribute__((destructor)) void end() {
    const long made = support::calls::made() - callsBefore;
    const char* const file = std::getenv("FAIL_COUNT");
    if (file != nullptr)
        std::ofstream(file) << made << " " << support::calls::failed() << std::endl;
}

} // namespace

// What only servers call; FailingCalls has the rest.
INTERPOSE(int, getentropy, (void* buffer, std::size_t size), noexcept, -1, (buffer, size))
INTERPOSE(int, getsockopt, (int socket, int level, int name, void* value, socklen_t* size), noexcept, -1,
          (socket, level, name, value, size))
INTERPOSE(int, epoll_create1, (int flags), noexcept, -1, (flags))
INTERPOSE(int, epoll_wait, (int epoll, epoll_event* events, int count, int timeout), , -1,
          (epoll, events, count, timeout))
INTERPOSE(int, flock, (int descriptor, int operation), noexcept, -1, (descriptor, operation))

extern "C" __attribute__((visibility("default"))) int accept(int socket, sockaddr* address, socklen_t* size) {
    static const auto real = support::calls::next<int(int, sockaddr*, socklen_t*)>("accept");
    const int connection = support::calls::fails("accept") ? -1 : real(socket, address, size);
    if (connection >= 0 && awaitsConnection) {
        awaitsConnection = false;
        failAsAsked();
    }
    return connection;
}

// Boost.Asio does not check for errors on its own pipe and timer.
extern "C" __attribute__((visibility("default"))) int epoll_ctl(int epoll, int operation, int descriptor,
                                                                epoll_event* event) noexcept {
    static const auto real = support::calls::next<int(int, int, int, epoll_event*)>("epoll_ctl");
    struct stat status;
    const bool isSocket = ::fstat(descriptor, &status) == 0 && S_ISSOCK(status.st_mode);
    return isSocket && support::calls::fails("epoll_ctl") ? -1 : real(epoll, operation, descriptor, event);
}
