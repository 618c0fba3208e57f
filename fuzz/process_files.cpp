// The files of a process in /proc, and the lines of the software inventory.
#include "QAV_UnixProcessAPI.hpp"
#include "Sources.hpp"

#include "support/Bytes.hpp"
#include "support/Folder.hpp"

#include <sblim_utilities.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

/** What the software inventory prints next. */
std::vector<std::string> inventoryLines;

/** A folder like /proc with one process. */
class ProcFolder {
public:
    ProcFolder() {
        std::filesystem::create_directory(m_folder.path() + "/7");
        std::filesystem::create_symlink("/usr/bin/any", m_folder.path() + "/7/exe");
        inventory::procFolder = m_folder.path().c_str();
    }
    void write(const std::string& name, const std::string& content) const {
        m_folder.write("7/" + name, content);
    }

private:
    fuzz::Folder m_folder;
};

void walk(QAV_UnixProcessAPI::tProcessInfoType type) {
    QAV_UnixProcessAPI processes;
    processes.init(type);
    processes.begin();
    while (processes.hasNext()) {
        OpenWBEM::CIMDateTime time;
        OpenWBEM::Array<OpenWBEM::String> parameters;
        processes.next();
        if (processes.getTotalCpuTime(time))
            time.toString();
        processes.getParameters(parameters);
    }
}

} // namespace

// In place of those of the utilities library: nothing is run.
extern "C" int runcommand(const char*, char**, char*** out, char***) {
    *out = static_cast<char**>(std::calloc(inventoryLines.size() + 1, sizeof(char*)));
    for (std::size_t i = 0; i < inventoryLines.size(); ++i)
        (*out)[i] = ::strdup(inventoryLines[i].c_str());
    return 0;
}

extern "C" void freeresultbuf(char** lines) {
    for (char** line = lines; line != nullptr && *line != nullptr; ++line)
        std::free(*line);
    std::free(lines);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ProcFolder proc;
    fuzz::Bytes bytes(data, size);
    for (const char* const file : {"stat", "status", "cmdline"})
        proc.write(file, bytes.text());
    inventoryLines.clear();
    while (!bytes.isEmpty())
        inventoryLines.push_back(bytes.text());
    walk(QAV_UnixProcessAPI::eProcessInformation);
    walk(QAV_UnixProcessAPI::eStatisticalInformation);
    return 0;
}
