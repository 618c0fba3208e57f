#ifndef CIMOM_PROTOCOL_HANDLER_HPP_INCLUDED
#define CIMOM_PROTOCOL_HANDLER_HPP_INCLUDED
#include "objects/Access.hpp"

#include <cstddef>
#include <exception>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace cimom {

/** Maximum number of bytes of the description of an error. */
inline constexpr std::size_t maximumDescription = 1024;

/** Why an operation failed. */
struct OperationError {
    /** Status code of DSP0200. */
    unsigned code;
    std::string description;
};

/**
 * The error of an operation that an exception ends: the code of a CIMException, else FAILED. The description
 * may quote the request; it is cut after maximumDescription bytes, at the end of a character.
 */
OperationError operationError(const std::exception& e);

/** The rest of a reply's body. It is made as the client takes it, so no long reply is in memory as a whole.
 */
class ReplyPieces {
public:
    virtual ~ReplyPieces() = default;

    /** Appends the next piece; false after the last one. Throws what ends the operation halfway. */
    virtual bool appendNext(std::string& body) = 0;

protected:
    ReplyPieces() = default;
    ReplyPieces(const ReplyPieces&) = default;
    ReplyPieces& operator=(const ReplyPieces&) = default;
};

/** The outcome of an operation. */
struct OperationReply {
    /** The operation and the class, for the log. */
    std::string title;
    /** The beginning of the body. If the operation failed, the error. */
    std::string body;
    /** What follows `body`; null if that is all. The handler must outlive it. */
    std::unique_ptr<ReplyPieces> more;
    /** Set when the operation failed. */
    std::optional<OperationError> error;
};

/** Thrown for a request that names no operation: an error of HTTP. */
class UnreadableRequest : public std::runtime_error {
public:
    /** @param cimError value of the header CIMError, DSP0200 */
    UnreadableRequest(unsigned status, const char* reason, const std::string& cimError)
        : std::runtime_error(cimError)
        , m_status(status)
        , m_reason(reason) {}

    unsigned status() const { return m_status; }
    const char* reason() const { return m_reason; }

private:
    unsigned m_status;
    const char* m_reason;
};

/** What the head of a request says about its body (DSP0200, CIM extension headers), percent-decoded. */
struct Announcement {
    /** CIMMethod: name of the operation. */
    std::optional<std::string> method;
    /** CIMObject: the namespace; for a method of a class a colon and the object follow. */
    std::optional<std::string> object;
};

/** Carries out the requests of one protocol. */
class Handler {
public:
    virtual ~Handler() = default;

    /** Content-Type of the replies. */
    virtual const char* contentType() const = 0;
    /**
     * Carries out a request. Throws UnreadableRequest, and AnswerPending before the operation has any effect;
     * the reply reports all other errors.
     *
     * @param request the body of the request
     * @param access what the client may do
     * @param announced a body in CIM-XML that contradicts it is unreadable
     */
    virtual OperationReply handle(std::string_view request, Access access,
                                  const Announcement& announced = Announcement()) const = 0;

protected:
    Handler() = default;
    Handler(const Handler&) = default;
    Handler& operator=(const Handler&) = default;
};

} // namespace cimom
#endif
