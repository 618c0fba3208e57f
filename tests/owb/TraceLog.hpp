#ifndef TESTS_OWB_TRACE_LOG_HPP
#define TESTS_OWB_TRACE_LOG_HPP
#include "support/Child.hpp"
#include "support/TempDir.hpp"

#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

using Lines = std::vector<std::string>;

/** Runs code with the trace on and reads what it traced. Each run is a process of its own. */
class TraceLog {
public:
    TraceLog() { m_folder.write("vdxDebug", m_folder.file("log") + "\n"); }

    const support::TempDir& folder() const { return m_folder; }

    /** Runs the body in a child with the trace on; returns what it printed. */
    std::string run(const std::function<void()>& body) const {
        return support::inChild(m_folder.path(), body);
    }

    /** Everything traced so far, as it stands in the log. */
    std::string raw() const {
        const std::string log = m_folder.file("log");
        return std::filesystem::exists(log) ? support::readFile(log) : std::string();
    }

    /** The lines traced so far without their time: `file:function:line: message`. */
    Lines lines() const {
        Lines result;
        std::istringstream in(raw());
        for (std::string line; std::getline(in, line);) {
            const std::size_t timeLength = std::string("13:04:09:007: ").size();
            EXPECT_GE(line.size(), timeLength) << line;
            result.push_back(line.size() < timeLength ? line : line.substr(timeLength));
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
    support::TempDir m_folder;
};

#endif
