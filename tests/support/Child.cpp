#include "support/Child.hpp"

#include "support/CommonSwitch.hpp"

#include <cerrno>
#include <cstdio>
#include <gtest/gtest.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace support {
namespace {

// A child must not run the exit handlers of its parent, such as the leak checker.
bool hasLeaked() {
#ifdef __SANITIZE_ADDRESS__
    return __lsan_do_recoverable_leak_check() != 0;
#else
    return false;
#endif
}

[[noreturn]] void runBody(const std::string& directory, const std::function<void()>& body,
                          std::FILE* output) {
    ::dup2(::fileno(output), STDOUT_FILENO);
    if (::chdir(directory.c_str()) != 0)
        ::_exit(2);
    int code = 0;
    try {
        body();
    } catch (const std::exception& e) {
        std::fprintf(stderr, "child: exception: %s\n", e.what());
        code = 3;
    } catch (...) {
        std::fprintf(stderr, "child: exception of an unknown type\n");
        code = 3;
    }
    std::fflush(nullptr);
    if (code == 0 && (::testing::Test::HasFailure() || hasLeaked()))
        code = 1;
    ::_exit(code);
}

} // namespace

std::string inChild(const std::string& directory, const std::function<void()>& body) {
    std::FILE* const output = std::tmpfile();
    if (output == nullptr)
        throw std::runtime_error("tmpfile failed");
    std::fflush(nullptr);
    const pid_t pid = ::fork();
    if (pid < 0)
        throw std::runtime_error("fork failed");
    if (pid == 0)
        runBody(directory, body, output);
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    std::string text;
    std::rewind(output);
    for (int c = std::fgetc(output); c != EOF; c = std::fgetc(output))
        text += static_cast<char>(c);
    std::fclose(output);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "child ended with status " << status << "\n"
                                                               << text;
    return text;
}

} // namespace support
