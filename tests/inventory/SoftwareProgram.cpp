#include "inventory/SoftwareProgram.hpp"

#include <cstdlib>
#include <cstring>
#include <sblim_utilities.h>

SoftwareProgram& SoftwareProgram::instance() {
    static SoftwareProgram program;
    return program;
}

extern "C" int runcommand(const char* cmd, char** in, char*** out, char*** err) {
    SoftwareProgram& program = SoftwareProgram::instance();
    ++program.runs;
    program.command = cmd;
    program.hasMoreThanOutput = in != nullptr || err != nullptr;
    *out = nullptr;
    if (program.isMissing)
        return -1;
    *out = static_cast<char**>(std::calloc(program.lines.size() + 1, sizeof(char*)));
    for (std::size_t i = 0; *out != nullptr && i < program.lines.size(); ++i) {
        (*out)[i] = ::strdup(program.lines[i].c_str());
        if ((*out)[i] == nullptr) { // out of memory
            freeresultbuf(*out);
            *out = nullptr;
        }
    }
    return *out != nullptr ? 0 : -1;
}

extern "C" void freeresultbuf(char** buf) {
    for (char** line = buf; line != nullptr && *line != nullptr; ++line)
        std::free(*line);
    std::free(buf);
}
