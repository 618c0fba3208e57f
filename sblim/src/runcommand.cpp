#include "sblim_utilities.h"

#include "Shell.hpp"
#include "Text.hpp"
#include "TimeLimit.hpp"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <poll.h>
#include <sys/mman.h>

int sblim::timeLimit = 30000;

namespace {

using sblim::Descriptor;
using sblim::Text;

/** The reading end of a pipe, and the text read so far. */
struct Stream {
    Descriptor end;
    Text text;
};

struct Streams {
    Stream status;
    Stream out;
    Stream err;
};

bool openPipe(Descriptor& reader, Descriptor& writer) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        return false;
    const bool isRead = reader.take(ends[0]);
    return writer.take(ends[1]) && isRead;
}

/** Writes the lines to an unnamed file and rewinds it. */
bool writeInput(char** lines, Descriptor& input) {
    if (!input.take(::memfd_create("input", MFD_CLOEXEC)))
        return false;
    for (; *lines; ++lines)
        if (::dprintf(input.number(), "%s\n", *lines) < 0)
            return false;
    return ::lseek(input.number(), 0, SEEK_SET) == 0;
}

/** Starts a command and opens the requested streams. */
bool start(const char* command, char** in, bool hasOut, bool hasErr, sblim::Shell& shell, Streams& streams) {
    sblim::Files files;
    return (!in || writeInput(in, files.in)) && openPipe(streams.status.end, files.status) &&
           (!hasOut || openPipe(streams.out.end, files.out)) &&
           (!hasErr || openPipe(streams.err.end, files.err)) && shell.start(command, files);
}

/** Milliseconds of CLOCK_MONOTONIC. */
long long now() {
    timespec time{};
    ::clock_gettime(CLOCK_MONOTONIC, &time);
    return time.tv_sec * 1000LL + time.tv_nsec / 1000000;
}

/** Reads available bytes. False when out of memory. */
bool readSome(Stream& stream) {
    const ssize_t count = stream.text.readFrom(stream.end.number());
    if (count < 0 && errno == ENOMEM)
        return false;
    if (count == 0 || (count < 0 && errno != EINTR))
        stream.end.reset();
    return true;
}

enum class Reading { ended, late, noMemory };

/** Reads the streams to their ends, or until the deadline, a time of now(). */
Reading readAll(Streams& streams, long long deadline) {
    Stream* const all[] = {&streams.status, &streams.out, &streams.err};
    while (streams.status.end.isOpen() || streams.out.end.isOpen() || streams.err.end.isOpen()) {
        const long long left = deadline - now();
        if (left <= 0)
            return Reading::late;
        pollfd polled[3];
        for (int i = 0; i < 3; ++i)
            polled[i] = {all[i]->end.number(), POLLIN, 0}; // poll(2) ignores negative numbers
        if (::poll(polled, 3, static_cast<int>(left)) <= 0)
            continue;
        for (int i = 0; i < 3; ++i)
            if (polled[i].revents != 0 && !readSome(*all[i]))
                return Reading::noMemory;
    }
    return Reading::ended;
}

/** The exit status that the shell has written, else 128 + the signal that ended the shell; -1 if it ran no
 * command. */
int exitStatus(const Text& written, int signal) {
    if (written.bytes() && *written.bytes() != '\0')
        return static_cast<int>(std::strtol(written.bytes(), nullptr, 10));
    return signal > 0 ? 128 + signal : -1;
}

/** Returns the lines of a requested stream in *result. False when out of memory. */
bool returnLines(Stream& stream, char*** result) {
    if (result)
        *result = stream.text.toLines();
    return !result || *result;
}

void clear(char*** result) {
    if (!result)
        return;
    sblim::freeLines(*result);
    *result = nullptr;
}

} // namespace

int runcommand(const char* cmd, char** in, char*** out, char*** err) {
    const long long deadline = now() + sblim::timeLimit;
    if (out)
        *out = nullptr;
    if (err)
        *err = nullptr;
    sblim::Shell shell;
    Streams streams;
    if (!cmd || !start(cmd, in, out != nullptr, err != nullptr, shell, streams))
        return -1;
    const Reading reading = readAll(streams, deadline);
    if (reading != Reading::ended)
        shell.kill();
    const int status = exitStatus(streams.status.text, shell.collect());
    if (status >= 0 && reading != Reading::noMemory && returnLines(streams.out, out) &&
        returnLines(streams.err, err))
        return status;
    clear(out);
    return -1;
}

void freeresultbuf(char** buf) {
    sblim::freeLines(buf);
}
