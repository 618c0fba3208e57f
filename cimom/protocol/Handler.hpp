#ifndef CIMOM_PROTOCOL_HANDLER_HPP_INCLUDED
#define CIMOM_PROTOCOL_HANDLER_HPP_INCLUDED
#include "objects/Access.hpp"

#include <cstddef>
#include <exception>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace cimom {

/** Bytes of the text that tells a client why an operation failed. */
inline constexpr std::size_t longestDescription = 1024;

/** Why an operation failed, for a client that is told so beside the body of the reply. */
struct OperationError {
    /** Status code of DSP0200. */
    unsigned code;
    std::string description;
};

/**
 * What an exception means for the operation that it ends: its code when it is a CIMException, else FAILED.
 * The description may quote what the client asked; it is cut to longestDescription bytes, at a whole
 * character.
 */
OperationError operationError(const std::exception& e);

/** The outcome of an operation. */
struct OperationReply {
    /** What was asked, for the log: the operation and the class. */
    std::string title;
    /** The beginning of the body; of a failed operation the error in the form that stands in for the result.
     */
    std::string body;
    /**
     * Appends the next piece of the body, and tells whether there may be more after it; null when `body` is
     * all. Throws what ends the operation halfway. It is called as the client takes what it has got, so that
     * no long reply stands in memory whole; the handler must outlive it.
     */
    std::function<bool(std::string&)> more;
    /** Set when the operation failed. */
    std::optional<OperationError> error;
};

/** A request that says no operation: an error of HTTP. */
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

/** What the head of a request says about its body (DSP0200, CIM extension headers), without escapes; absent
 * what it does not say. */
struct Announcement {
    /** CIMMethod: name of the operation. */
    std::optional<std::string> method;
    /** CIMObject: the namespace, and for a method of a class what it belongs to, with a colon before it. */
    std::optional<std::string> object;
};

/** Carries out the requests of one protocol. */
class Handler {
public:
    virtual ~Handler() = default;

    /** Content-Type of the replies. */
    virtual const char* contentType() const = 0;
    /**
     * Throws UnreadableRequest, and AnswerPending before anything is done; what else goes wrong is in the
     * reply.
     *
     * @param request the body of the request
     * @param access what the client may do
     * @param announced what the body of a request in CIM-XML must not contradict
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
