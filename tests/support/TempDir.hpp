#ifndef TESTS_SUPPORT_TEMP_DIR_HPP
#define TESTS_SUPPORT_TEMP_DIR_HPP
#include <string>

namespace support {

/** A directory of the test's own, removed with all it holds. */
class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::string& path() const { return m_path; }
    std::string file(const std::string& name) const { return m_path + "/" + name; }
    /** Writes a file below the directory, making the directories on its way; returns its path. */
    std::string write(const std::string& name, const std::string& content) const;

private:
    std::string m_path;
};

/** Content of a file; throws std::runtime_error when it cannot be read. */
std::string readFile(const std::string& path);

} // namespace support
#endif
