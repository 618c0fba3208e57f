#ifndef FUZZ_SUPPORT_DIRECTORY_HPP
#define FUZZ_SUPPORT_DIRECTORY_HPP
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace fuzz {

/** A temporary directory for the files that a target reads; in memory if possible. Removed by the destructor.
 */
class Directory {
public:
    Directory() {
        if (::mkdtemp(m_path.data()) == nullptr)
            std::abort();
    }
    ~Directory() { std::filesystem::remove_all(m_path); }
    Directory(const Directory&) = delete;
    Directory& operator=(const Directory&) = delete;

    const std::string& path() const { return m_path; }
    void write(const std::string& name, const std::string& content) const {
        std::ofstream(m_path + "/" + name, std::ios::binary) << content;
    }

private:
    std::string m_path =
        (std::filesystem::is_directory("/dev/shm") ? "/dev/shm" : "/tmp") + std::string("/owb-fuzz.XXXXXX");
};

} // namespace fuzz
#endif
