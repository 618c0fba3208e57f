#include "agent/Trace.hpp"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <sys/mman.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace agent {
namespace {

int checked(int result, const std::string& what) {
    if (result < 0)
        throw std::system_error(errno, std::generic_category(), what);
    return result;
}

int openTrace(const std::string& path) {
    if (path == "-") {
        // The library reopens the file for each line. O_APPEND keeps both writers from overwriting each
        // other.
        fcntl(STDERR_FILENO, F_SETFL, fcntl(STDERR_FILENO, F_GETFL) | O_APPEND);
        // Reopening fails for a socket and for another user's file. O_NONBLOCK: do not wait for the reader of
        // a pipe.
        return checked(::open("/proc/self/fd/2", O_WRONLY | O_APPEND | O_CLOEXEC | O_NONBLOCK),
                       "cannot trace to standard error");
    }
    // Mode 0600: the trace holds the URL with its password.
    return checked(::open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_APPEND | O_CLOEXEC, 0600), path);
}

std::string nameOf(int descriptor) {
    return "/proc/self/fd/" + std::to_string(descriptor);
}

std::string temporaryDirectory() {
    const char* const path = std::getenv("TMPDIR");
    return path != nullptr && *path != '\0' ? path : "/tmp";
}

/** Changes the current directory to a new one with a switch file, and back at the end of its scope. */
class SwitchDirectory {
public:
    explicit SwitchDirectory(const std::string& log)
        : m_before(::open(".", O_PATH | O_DIRECTORY | O_CLOEXEC)) {
        checked(::mkdtemp(m_path.data()) == nullptr ? -1 : 0,
                "cannot create directory for the trace switch, " + m_path);
        std::ofstream switchFile(file());
        switchFile << log << std::endl;
        if (!switchFile || ::chdir(m_path.c_str()) != 0) {
            const int error = errno;
            remove();
            throw std::system_error(error, std::generic_category(), "cannot write trace switch in " + m_path);
        }
    }
    ~SwitchDirectory() {
        // The previous directory may have become inaccessible. It can hold no switch file for this user then.
        if (::fchdir(m_before) != 0 && ::chdir("/") != 0)
            std::abort();
        remove();
    }
    SwitchDirectory(const SwitchDirectory&) = delete;
    SwitchDirectory& operator=(const SwitchDirectory&) = delete;

private:
    std::string file() const { return m_path + "/vdxDebug"; }
    void remove() const {
        ::unlink(file().c_str());
        ::rmdir(m_path.c_str());
        if (m_before >= 0)
            ::close(m_before);
    }

    const int m_before;
    std::string m_path = temporaryDirectory() + "/owbctl.XXXXXX";
};

/** Starts the trace of an exception, "ERROR <type> <file>:<line>  <message>", and of other errors. */
const std::string mark = "ERROR ";

/** The exception that the line from `begin` on traces; nothing if it traces another error. */
std::optional<Thrown> exceptionAt(const std::string& text, std::size_t begin) {
    if (begin == std::string::npos)
        return std::nullopt;
    const std::string line = text.substr(begin, text.find('\n', begin) - begin);
    const std::size_t message = line.find("  ");
    if (message == std::string::npos)
        return std::nullopt;
    return Thrown{line.substr(mark.size(), line.find(' ', mark.size()) - mark.size()),
                  line.substr(message + 2)};
}

} // namespace

Trace::Trace(const std::string& path)
    : Trace(openTrace(path)) {}

Trace::Trace()
    : Trace(checked(memfd_create("trace", MFD_CLOEXEC), "trace")) {}

Trace::Trace(int descriptor)
    : m_descriptor(descriptor) {}

Trace::~Trace() {
    ::close(m_descriptor);
}

void Trace::begin(const std::function<void()>& firstCall) const {
    const SwitchDirectory directory(nameOf(m_descriptor));
    firstCall();
}

std::size_t Trace::size() const {
    struct stat status {};
    // Reading a terminal or a pipe would block.
    if (::fstat(m_descriptor, &status) != 0 || !S_ISREG(status.st_mode))
        return 0;
    return static_cast<std::size_t>(status.st_size);
}

std::optional<Thrown> Trace::lastException(std::size_t from) const {
    if (size() <= from)
        return std::nullopt;
    std::ifstream file(nameOf(m_descriptor));
    file.seekg(static_cast<std::streamoff>(from));
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    std::size_t begin = text.rfind(mark);
    std::optional<Thrown> thrown = exceptionAt(text, begin);
    while (!thrown && begin != std::string::npos && begin > 0) {
        begin = text.rfind(mark, begin - 1);
        thrown = exceptionAt(text, begin);
    }
    return thrown;
}

} // namespace agent
