// The files of a process in /proc, and the lines of the software inventory.
#include "Processes.hpp"
#include "SoftwareType.hpp"

#include "support/Bytes.hpp"
#include "support/Directory.hpp"

#include <string>
#include <vector>

namespace {

/** A directory like /proc with one process. */
class ProcDirectory {
public:
    ProcDirectory() {
        std::filesystem::create_directory(path() + "/7");
        std::filesystem::create_symlink("/usr/bin/any", path() + "/7/exe");
    }
    const std::string& path() const { return m_directory.path(); }
    void write(const std::string& name, const std::string& content) const {
        m_directory.write("7/" + name, content);
    }

private:
    fuzz::Directory m_directory;
};

void read(const inventory::Sources& sources, QAV_UnixProcessAPI::tProcessInfoType type) {
    OpenWBEM::Array<inventory::Process> processes;
    inventory::readProcesses(sources, type, processes);
    for (const inventory::Process& process : processes)
        process.totalCpuTime.toString();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ProcDirectory proc;
    fuzz::Bytes bytes(data, size);
    for (const char* const file : {"stat", "status", "cmdline"})
        proc.write(file, bytes.text());
    std::vector<std::string> texts;
    while (!bytes.isEmpty())
        texts.push_back(bytes.text());
    std::vector<const char*> lines;
    lines.reserve(texts.size() + 1);
    for (const std::string& text : texts)
        lines.push_back(text.c_str());
    lines.push_back(nullptr);
    const inventory::Sources sources = {proc.path(), [&lines](const OpenWBEM::String& name) {
                                            return inventory::softwareType(lines.data(), name);
                                        }};
    read(sources, QAV_UnixProcessAPI::eProcessInformation);
    read(sources, QAV_UnixProcessAPI::eStatisticalInformation);
    return 0;
}
