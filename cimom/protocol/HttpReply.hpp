#ifndef CIMOM_PROTOCOL_HTTP_REPLY_HPP_INCLUDED
#define CIMOM_PROTOCOL_HTTP_REPLY_HPP_INCLUDED
#include "http/Responder.hpp"
#include "protocol/Handler.hpp"
#include "protocol/RequestHead.hpp"

#include <optional>
#include <string>

namespace cimom {

/**
 * The reply to an operation as a reply of HTTP (DSP0200).
 *
 * If the client reads trailers, they report an error in mid-reply and, in the binary protocol, any other
 * error. In all other cases the body reports an error, and an error in mid-reply is thrown.
 */
class HttpReply : public http::Reply {
public:
    /**
     * @param contentType must outlive the reply
     * @param number of two digits, for the prefix of the extension fields (RFC 2774)
     */
    HttpReply(OperationReply reply, const RequestHead& request, const char* contentType, std::string number);

    http::ReplyHead head() const override;
    bool append(std::string& piece) override;
    http::Fields trailers() const override;
    std::string title() const override { return m_reply.title; }
    std::optional<std::string> failure() const override;

private:
    std::string prefix() const { return m_request.isExtended() ? m_number + "-" : std::string(); }

    OperationReply m_reply;
    RequestHead m_request;
    const char* m_contentType;
    std::string m_number;
    bool m_hasErrorTrailers = false;
};

} // namespace cimom
#endif
