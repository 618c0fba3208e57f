#ifndef CIMOM_SYSTEM_REGULAR_FILE_HPP_INCLUDED
#define CIMOM_SYSTEM_REGULAR_FILE_HPP_INCLUDED
#include <optional>
#include <string>
#include <sys/stat.h>

namespace cimom {

/** The directory that holds a file. */
std::string directoryOf(const std::string& path);

/** The content and status of a regular file. */
struct RegularFile {
    std::string content;
    /** Owner, group and mode of the file that was read, even if another file has its name now. */
    struct stat status;
};

/**
 * Reads a whole file; nothing if it does not exist. Throws std::runtime_error `<path>: <why>` if it cannot be
 * read, or is not a regular file.
 */
std::optional<RegularFile> readRegularFile(const std::string& path);

/**
 * Replaces the content of a file, or creates the file, atomically: if the process or the machine fails, the
 * file holds all of the old content or all of the new. When this returns, the new content is on the disk.
 * Writes to `<path>.new` first, so only one process at a time may call this.
 *
 * Throws std::system_error. The content is then the old one; the new one only if the last flush has failed.
 *
 * @param like owner, group and mode of the file; null for a file that only its owner may use
 */
void replaceRegularFile(const std::string& path, const std::string& content,
                        const struct stat* like = nullptr);

} // namespace cimom
#endif
