#ifndef TESTS_SUPPORT_TEMP_DIR_HPP
#define TESTS_SUPPORT_TEMP_DIR_HPP
#include <string>

namespace support {

/** A new temporary directory. The destructor removes it with its contents. */
class TempDir {
public:
    TempDir();
    explicit TempDir(const std::string& parent);
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::string& path() const { return m_path; }
    std::string file(const std::string& name) const { return m_path + "/" + name; }
    /** Writes a file below the directory and creates missing directories. Returns the path of the file. */
    std::string write(const std::string& name, const std::string& content) const;
    /** The same, for a file that only its owner may read and write. */
    std::string writeSecret(const std::string& name, const std::string& content) const;

private:
    std::string m_path;
};

/** The content of a file. Throws std::runtime_error if it cannot be read. */
std::string readFile(const std::string& path);

} // namespace support
#endif
