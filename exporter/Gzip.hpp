#ifndef EXPORTER_GZIP_HPP
#define EXPORTER_GZIP_HPP

#include <string>
#include <string_view>
#include <zlib.h>

namespace exporter {

/** Compresses a text in the form of gzip(1), piece by piece. */
class Gzip {
public:
    /** Throws std::bad_alloc. */
    Gzip();
    ~Gzip();
    Gzip(const Gzip&) = delete;
    Gzip& operator=(const Gzip&) = delete;

    /** Compresses the next piece, and appends what is complete to `compressed`. */
    void add(std::string_view piece, std::string& compressed) { deflate(piece, Z_NO_FLUSH, compressed); }
    /** Ends the text. */
    void finish(std::string& compressed) { deflate({}, Z_FINISH, compressed); }

private:
    void deflate(std::string_view piece, int flush, std::string& compressed);

    z_stream m_stream{};
};

} // namespace exporter
#endif
