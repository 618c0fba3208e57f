#ifndef OPENWBEM_CLIENT_HTTP_REPLY_HPP_INCLUDED
#define OPENWBEM_CLIENT_HTTP_REPLY_HPP_INCLUDED
#include "client/HTTPMessage.hpp"
#include "client/Inflater.hpp"

#include <memory>
#include <optional>

namespace OpenWBEM {

/**
 * The reply to a request, and its connection. After decoding the body, call finish(); if decoding fails, call
 * throwReportedError(). A reply destroyed earlier closes its connection.
 */
class HTTPReply : public io::Source {
public:
    /** @param kept receives the connection when the reply is complete; must outlive the reply */
    HTTPReply(std::unique_ptr<Stream> connection, std::unique_ptr<Stream>& kept);

    /** Head and trailers. */
    HTTPMessage& message() { return m_message; }
    /** Throws HTTPException for an error response, and for a reply without a readable body. */
    void expectBody();

    /**
     * Reads the body as it arrives, decompressed. Throws IOException "Failed reading data" if it is
     * truncated.
     */
    std::size_t read(char* to, std::size_t size) override;

    /**
     * Discards the rest of the body. Then throws the error that the trailers report, if any:
     * CIMErrorException, CIMException, or StringConversionException for a code that is not a number. Throws
     * IOException "Failed reading data" if the body is truncated.
     */
    void finish();
    /** The same, but ignores errors in the body. For use after a decoding error. */
    void throwReportedError();

private:
    void skip(io::Source& rest);

    std::unique_ptr<Stream> m_connection;
    std::unique_ptr<Stream>& m_kept;
    HTTPMessage m_message;
    std::optional<Inflater> m_inflater; // for a compressed body
};

} // namespace OpenWBEM
#endif
