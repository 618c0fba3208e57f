#ifndef FUZZ_SUPPORT_FOLDER_HPP
#define FUZZ_SUPPORT_FOLDER_HPP
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace fuzz {

/** A folder for files that a target reads, in memory where that is at hand; gone with the object. */
class Folder {
public:
    Folder() {
        if (::mkdtemp(m_path.data()) == nullptr)
            std::abort();
    }
    ~Folder() { std::filesystem::remove_all(m_path); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

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
