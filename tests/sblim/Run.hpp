#ifndef TESTS_SBLIM_RUN_HPP
#define TESTS_SBLIM_RUN_HPP
#include "sblim_utilities.h"

#include <string>
#include <vector>

/** The results of runcommand(). */
struct Outcome {
    int status;
    std::vector<std::string> out;
    std::vector<std::string> err;
};

/** Copies the lines of an array and releases it. */
inline std::vector<std::string> takeLines(char** array) {
    std::vector<std::string> lines;
    for (char** line = array; line && *line; ++line)
        lines.emplace_back(*line);
    freeresultbuf(array);
    return lines;
}

/** Runs a command without input. */
inline Outcome run(const std::string& command) {
    char** out;
    char** err;
    const int status = runcommand(command.c_str(), nullptr, &out, &err);
    return {status, takeLines(out), takeLines(err)};
}

/** Runs a command with lines of input. */
inline Outcome run(const std::string& command, std::vector<std::string> input) {
    std::vector<char*> in;
    for (std::string& line : input)
        in.push_back(line.data());
    in.push_back(nullptr);
    char** out;
    char** err;
    const int status = runcommand(command.c_str(), in.data(), &out, &err);
    return {status, takeLines(out), takeLines(err)};
}

using Lines = std::vector<std::string>;

#endif
