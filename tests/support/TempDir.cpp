#include "support/TempDir.hpp"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace support {

TempDir::TempDir()
    : TempDir(std::filesystem::temp_directory_path().string()) {}

TempDir::TempDir(const std::string& parent) {
    std::string pattern = parent + "/owb-test-XXXXXX";
    if (!::mkdtemp(pattern.data()))
        throw std::runtime_error("mkdtemp failed: " + pattern);
    m_path = pattern;
}

TempDir::~TempDir() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::string TempDir::write(const std::string& name, const std::string& content) const {
    const std::filesystem::path path = file(name);
    std::filesystem::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary);
    out << content;
    if (!out.flush())
        throw std::runtime_error("cannot write " + path.string());
    return path.string();
}

std::string TempDir::writeSecret(const std::string& name, const std::string& content) const {
    const std::string path = write(name, content);
    using std::filesystem::perms;
    std::filesystem::permissions(path, perms::owner_read | perms::owner_write);
    return path;
}

std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in)
        throw std::runtime_error("cannot read " + path);
    std::ostringstream content;
    content << in.rdbuf();
    return content.str();
}

} // namespace support
