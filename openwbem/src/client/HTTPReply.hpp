#ifndef OPENWBEM_CLIENT_HTTP_REPLY_HPP_INCLUDED
#define OPENWBEM_CLIENT_HTTP_REPLY_HPP_INCLUDED
#include "client/HTTPMessage.hpp"
#include "client/Inflater.hpp"

#include <memory>
#include <optional>

namespace OpenWBEM {

/**
 * The reply to a request and the connection on which it comes. Whoever decodes the body calls finish() after
 * it, or throwReportedError() when decoding has failed; a reply that is destroyed before closes its
 * connection.
 */
class HTTPReply : public io::Source {
public:
    /** @param kept where the connection is put when the reply has ended well; must outlive the reply */
    HTTPReply(std::unique_ptr<Stream> connection, std::unique_ptr<Stream>& kept);

    /** What the object manager says about the body. */
    HTTPMessage& message() { return m_message; }
    /** Throws the HTTPException that says why this is no reply with a body that can be read, if it is none.
     */
    void expectBody();

    /**
     * The body as it arrives, without what was done to it for the transport. Throws IOException "Failed
     * reading data" when it breaks off.
     */
    std::size_t read(char* to, std::size_t size) override;

    /**
     * Reads and ignores what is left of the body, to its end. Then throws the error that the object manager
     * reports behind it, if any: CIMErrorException, CIMException, or StringConversionException for a code
     * that is no number. Throws IOException "Failed reading data" when the body does not end well.
     */
    void finish();
    /** The same for a body that made no sense, so that what is wrong with it does not matter. */
    void throwReportedError();

private:
    void skip(io::Source& rest);

    std::unique_ptr<Stream> m_connection;
    std::unique_ptr<Stream>& m_kept;
    HTTPMessage m_message;
    std::optional<Inflater> m_inflater; // of a compressed body
};

} // namespace OpenWBEM
#endif
