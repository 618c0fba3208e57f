#ifndef CIMOM_SYSTEM_REGULAR_FILE_HPP_INCLUDED
#define CIMOM_SYSTEM_REGULAR_FILE_HPP_INCLUDED
#include <optional>
#include <string>
#include <sys/stat.h>

namespace cimom {

/** The folder that holds a file. */
std::string folderOf(const std::string& path);

/** A file, and no folder, pipe or device. */
struct RegularFile {
    std::string content;
    /** Owner, group and mode are those of the file that was read, whatever has its name now. */
    struct stat status;
};

/**
 * Reads a file whole; nothing when there is none. Throws std::runtime_error that says `<path>: <why>` when
 * it cannot be read, or is no regular file.
 */
std::optional<RegularFile> readRegularFile(const std::string& path);

/**
 * Replaces the content of a file, or makes one, at once: whatever happens to the process or the machine,
 * the file holds all of the old content or all of the new. When this returns, the new content is on the
 * disk. It is written to `<path>.new` first, so only one process at a time may do this.
 *
 * @param like null for a file that its owner alone may use, else the owner, group and mode that it shall
 * have
 *
 * Throws std::system_error; the content is then the old one, or, when the disk failed at the very end, the
 * new.
 */
void replaceRegularFile(const std::string& path, const std::string& content,
                        const struct stat* like = nullptr);

} // namespace cimom
#endif
