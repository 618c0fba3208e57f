#include "system/Program.hpp"

#include "service/ChildProcess.hpp"
#include "util/Descriptor.hpp"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <memory>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace cimom {
namespace {

[[noreturn]] void fail(int error, const std::string& what) {
    throw std::system_error(error, std::generic_category(), what);
}

struct DestroyAttributes {
    void operator()(posix_spawnattr_t* attributes) const { ::posix_spawnattr_destroy(attributes); }
};
struct DestroyActions {
    void operator()(posix_spawn_file_actions_t* actions) const {
        ::posix_spawn_file_actions_destroy(actions);
    }
};

/** Starts a program with default signal handling and no blocked signals. */
pid_t start(const std::vector<std::string>& command, int output) {
    posix_spawnattr_t attributes;
    ::posix_spawnattr_init(&attributes);
    const std::unique_ptr<posix_spawnattr_t, DestroyAttributes> attributesEnd(&attributes);
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    const std::unique_ptr<posix_spawn_file_actions_t, DestroyActions> actionsEnd(&actions);
    sigset_t signals;
    ::sigemptyset(&signals);
    ::posix_spawnattr_setsigmask(&attributes, &signals);
    ::sigfillset(&signals);
    ::posix_spawnattr_setsigdefault(&attributes, &signals);
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    ::posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    pid_t process = 0;
    if (const int error =
            ::posix_spawn(&process, arguments[0], &actions, &attributes, arguments.data(), ::environ))
        fail(error, command.front());
    return process;
}

std::string readAllFrom(const util::Descriptor& pipe) {
    std::string text;
    char buffer[65536];
    for (;;) {
        const ssize_t size = ::read(pipe.number(), buffer, sizeof buffer);
        if (size < 0)
            fail(errno, "pipe");
        if (size == 0)
            return text;
        text.append(buffer, static_cast<std::size_t>(size));
        if (text.size() > maximumOutput)
            throw std::runtime_error("more than " + std::to_string(maximumOutput) + " bytes");
    }
}

} // namespace

ProgramOutput outputOf(const std::vector<std::string>& command) {
    service::openStandardStreams();
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        fail(errno, "pipe");
    const util::Descriptor reader(ends[0]);
    pid_t process = 0;
    {
        const util::Descriptor writer(ends[1]);
        process = start(command, writer.number());
    }
    std::string text = readAllFrom(reader);
    int status = 0;
    ::waitpid(process, &status, 0);
    return {std::move(text), WIFEXITED(status) && WEXITSTATUS(status) == 0};
}

} // namespace cimom
