#ifndef TESTS_OWB_TRACE_LOG_HPP
#define TESTS_OWB_TRACE_LOG_HPP
#include "support/Child.hpp"
#include "support/Pattern.hpp"
#include "support/TempDir.hpp"

#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

using Lines = std::vector<std::string>;

/** Runs the body in a child without a trace; returns what the body printed. */
inline std::string runWithoutTrace(const std::function<void()>& body) {
    const support::TempDir directory;
    return support::inChild(directory.path(), body);
}

/** Runs code with the trace on and reads what it traced. Each run is a separate process. */
class TraceLog {
public:
    TraceLog() { m_directory.write("vdxDebug", m_directory.file("log") + "\n"); }

    const support::TempDir& directory() const { return m_directory; }

    /** Runs the body in a child with the trace on; returns what it printed. */
    std::string run(const std::function<void()>& body) const {
        return support::inChild(m_directory.path(), body);
    }

    /** Everything traced so far, byte for byte. */
    std::string raw() const {
        const std::string log = m_directory.file("log");
        return std::filesystem::exists(log) ? support::readFile(log) : std::string();
    }

    /**
     * The traces so far without their time: `file:function:line: message`. A message of several lines is one
     * element with line feeds.
     */
    Lines lines() const {
        Lines result;
        std::istringstream in(raw());
        for (std::string line; std::getline(in, line);) {
            if (hasTime(line))
                result.push_back(line.substr(timeLength));
            else if (!result.empty())
                result.back() += "\n" + line;
            else
                ADD_FAILURE() << "no time: " << line;
        }
        return result;
    }

    /** The lines that one function traced, without file and function: `line: message`. */
    Lines linesOf(const std::string& function) const {
        Lines result;
        for (const std::string& line : lines()) {
            const std::size_t at = line.find(":" + function + ":");
            if (at != std::string::npos)
                result.push_back(line.substr(at + function.size() + 2));
        }
        return result;
    }

private:
    static const std::size_t timeLength = sizeof "13:04:09:007: " - 1;

    static bool hasTime(const std::string& line) {
        return support::matches(line.substr(0, timeLength), "\\d\\d:\\d\\d:\\d\\d:\\d\\d\\d: .*");
    }

    support::TempDir m_directory;
};

/**
 * Replaces the source file and line of the client library in traced exceptions by "PLACE", since they differ
 * between client libraries: "ERROR CIMException PLACE  general error".
 */
inline Lines withoutPlaces(Lines lines) {
    for (std::string& line : lines)
        line = support::replacedAll(line, "(ERROR \\w+) \\S+\\.[ch]pp:\\d+  ", "$1 PLACE  ");
    return lines;
}

#endif
