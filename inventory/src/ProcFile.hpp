#ifndef INVENTORY_PROC_FILE_HPP
#define INVENTORY_PROC_FILE_HPP
#include <cstddef>

namespace inventory {

/* The longest line that is taken; a longer one counts as several. */
const std::size_t longestLine = 511;

/* A file of /proc, open for reading as long as this lives. */
class ProcFile {
public:
    explicit ProcFile(const char* path);
    ~ProcFile();

    bool isOpen() const { return m_descriptor >= 0; }

    /*
     * Reads up to `size` bytes and returns their number; fewer only at the end of the file or when it cannot
     * be read. A file of /proc gives in one go all that it has room for (seq_file), so what comes short is
     * the end: asking once more would cost a system call and give nothing.
     */
    std::size_t read(char* buffer, std::size_t size);

private:
    ProcFile(const ProcFile&);
    ProcFile& operator=(const ProcFile&);

    int m_descriptor;
};

/* The lines of a file. */
class ProcLines {
public:
    explicit ProcLines(ProcFile& file);

    /* The next line, with its end where it has one; valid until the line after. False at the end. */
    bool next(const char*& line, std::size_t& size);

private:
    void readMore();

    ProcFile& m_file;
    char m_buffer[4096]; /* a status file fits, but for very many groups */
    std::size_t m_begin;
    std::size_t m_end;
    bool m_isAll; /* the file has nothing more */
};

} // namespace inventory

#endif
