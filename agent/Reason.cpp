#include "agent/Reason.hpp"

#include "agent/Endpoint.hpp"
#include "util/Ascii.hpp"
#include "util/Number.hpp"

#include <owb.h>

#include <cerrno>
#include <cstring>
#include <initializer_list>
#include <optional>
#include <string_view>

namespace agent {
namespace {

bool startsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

bool startsWithAny(std::string_view text, std::initializer_list<const char*> starts) {
    for (const char* const start : starts) {
        if (startsWith(text, start))
            return true;
    }
    return false;
}

std::string after(const std::string& text, std::string_view start) {
    return text.substr(start.size());
}

std::string withDetail(const std::string& text, const std::string& detail) {
    return detail.empty() || detail == text ? text : text + ": " + detail;
}

/** The number of a system error in "...: 111(Connection refused)"; nothing for another text. */
std::optional<int> systemError(std::string_view message) {
    const std::size_t end = message.rfind('(');
    const std::size_t begin = message.rfind(' ', end);
    if (end == std::string_view::npos || begin == std::string_view::npos)
        return std::nullopt;
    return util::decimal<int>(message.substr(begin + 1, end - begin - 1));
}

/** strerror(3) as part of a sentence. */
std::string systemText(int error) {
    std::string text = std::strerror(error);
    text.front() = ascii::toLower(text.front());
    return text;
}

/** The text of an error in "...: 13(Permission denied)", or the whole message. */
std::string systemTextOf(const std::string& message) {
    const std::optional<int> error = systemError(message);
    return error ? systemText(*error) : message;
}

/** The seconds in "Client receive timeout (600 seconds) expired.". */
std::string secondsOf(const std::string& message) {
    const std::size_t begin = message.find('(') + 1;
    return message.substr(begin, message.find(' ', begin) - begin) + " s";
}

/** A limit of this process or host, not of the connection. */
bool isLocalLimit(int error) {
    return error == EMFILE || error == ENFILE || error == ENOMEM || error == ENOBUFS;
}

Failure connectFailure(const std::string& message, const std::string& peer) {
    const std::optional<int> error = systemError(message);
    if (!error)
        return {"connection timed out: " + peer, true};
    if (isLocalLimit(*error))
        return {systemText(*error)};
    return {systemText(*error) + ": " + peer, true};
}

Failure socketFailure(const std::string& message, const std::string& peer) {
    if (startsWithAny(message, {"SocketBaseImpl::connect() ", "Failed to connect to: ", "Client connect "}))
        return connectFailure(message, peer);
    return {withDetail("connection lost", systemTextOf(message)), true};
}

Failure timeout(const std::string& message, const std::string& peer) {
    if (startsWith(message, "Client connect "))
        return {"connection timed out: " + peer, true};
    return {"no answer within " + secondsOf(message) + ": " + peer, true};
}

Failure unprocessed(const std::string& reason, const std::string& peer) {
    const std::string login = "Unauthorized";
    if (reason.empty())
        return {"connection closed without a valid answer: " + peer, true};
    if (!startsWith(reason, login))
        return {"request rejected: " + reason};
    const std::string detail = after(reason, login);
    return {"login rejected" + (startsWith(detail, ": ") ? detail : std::string()), true};
}

Failure httpFailure(const std::string& message, const std::string& peer) {
    const std::string rejected = "Unable to process request: ";
    const std::string unreadable = "Unable to open local authentication file: ";
    const std::string refused = "Rejected local authentication file ";
    const std::string junk = "Received junk from server statusline = ";
    if (startsWith(message, rejected))
        return unprocessed(after(message, rejected), peer);
    if (message == "No login/password to send")
        return {"login required, and the URL has no user"};
    if (message == "No known authentication schemes")
        return {"login required, in a scheme that the client library does not have"};
    if (startsWith(message, unreadable))
        return {"local login failed: " + systemTextOf(message)};
    if (startsWith(message, refused))
        return {"local login failed: " + after(message, refused)};
    if (startsWith(message, junk))
        return {"malformed reply: " + after(message, junk)};
    if (startsWith(message, "HTTPClient: unable to understand server response."))
        return {"malformed reply: it has no length"};
    return {message};
}

/** A text of the object manager without a code that means more. */
Failure reported(const std::string& text) {
    return {text.empty() ? "the object manager failed without a reason" : text};
}

struct CodeText {
    /** Of the client library. */
    const char* library;
    const char* plain;
};

constexpr CodeText codeTexts[] = {
    {"Access to CIM resource unavailable to client", "access denied"},
    {"namespace does not exist", "no such namespace"},
    {"invalid parameter passed to method", "invalid parameter"},
    {"class does not exist", "the class is not known there"},
    {"requested object could not be found", "no such instance"},
    {"requested operation is not supported", "not supported"},
    {"specified property does not exist", "no such property"},
    {"value supplied is incompatible with type", "invalid value"},
    {"general error", ""},
};

/** The client library throws these for replies that it cannot read, with the codes of the object manager. */
bool isAboutReply(const std::string& description) {
    return startsWithAny(description, {"Invalid XML. ", "Return is for ", "Return messageid=", "Called "});
}

/** It also throws these for paths that it cannot read. */
bool isAboutPath(const std::string& description) {
    return startsWithAny(description, {"Bad key in string ", "No key values found", "Invalid port in ",
                                       "Invalid instance name", "class name not found in instance name"});
}

/** "text (description)" becomes "plain: description". A description that begins with the text of its code is
 * the whole message. */
Failure cimFailure(const std::string& message, const std::string&) {
    for (const CodeText& code : codeTexts) {
        if (!startsWith(message, code.library))
            continue;
        std::string rest = after(message, code.library);
        if (!rest.empty() && !(startsWith(rest, " (") && rest.back() == ')'))
            break;
        const std::string description = rest.empty() ? rest : rest.substr(2, rest.size() - 3);
        if (isAboutReply(description))
            return {"malformed reply: " + description};
        if (isAboutPath(description))
            return {"malformed path: " + description};
        return *code.plain == '\0' ? reported(description) : Failure{withDetail(code.plain, description)};
    }
    return reported(message);
}

Failure readingFailure(const std::string& message, const std::string&) {
    if (message == "Out of memory")
        return {"out of memory"};
    if (message == "Failed reading data")
        return {"malformed reply: it is truncated, or its encoding is invalid"};
    if (startsWith(message, "Failed reading data: "))
        return {"malformed reply: " + after(message, "Failed reading data: ")};
    if (message == "Unexpected value received from server.")
        return {"malformed reply: it begins with an unknown result"};
    if (startsWithAny(message, {"Received ", "Signature does not match", "CIMBase::readSig"}))
        return {"malformed reply: " + message};
    return reported(message);
}

Failure malformedReply(const std::string& message, const std::string&) {
    return {"malformed reply: " + message};
}

Failure tlsFailure(const std::string& message, const std::string&) {
    return {message == "built without TLS" ? "the client library has no TLS" : message};
}

Failure urlFailure(const std::string& message, const std::string&) {
    std::string text = withoutPassword(message);
    text.front() = ascii::toLower(text.front());
    return {startsWith(text, "invalid URL") ? text : "invalid URL: " + text, true};
}

Failure hostFailure(const std::string& message, const std::string&) {
    return {"unknown host: " + message};
}

Failure rejection(const std::string& message, const std::string&) {
    return {"request rejected: " + message};
}

struct Kind {
    const char* type;
    Failure (*explain)(const std::string& message, const std::string& peer);
};

constexpr Kind kinds[] = {
    {"SocketException", socketFailure},
    {"SocketTimeoutException", timeout},
    {"HTTPException", httpFailure},
    {"SSLException", tlsFailure},
    {"UnknownHostException", hostFailure},
    {"MalformedURLException", urlFailure},
    {"UnescapeCharForURLException", urlFailure},
    {"CIMException", cimFailure},
    {"CIMErrorException", rejection},
    {"IOException", readingFailure},
    {"BadCIMSignatureException", malformedReply},
    {"XMLParseException", malformedReply},
    {"StringConversionException", malformedReply},
};

} // namespace

Failure failureOf(const Thrown& thrown, const std::string& url) {
    if (!thrown.message.empty()) {
        for (const Kind& kind : kinds) {
            if (thrown.type == kind.type)
                return kind.explain(thrown.message, peerName(url));
        }
    }
    return {withDetail(thrown.type, thrown.message)};
}

Failure failureOf(long status) {
    switch (status) {
    case OWB_NO_INSTANCE:
        return {"no such instance"};
    case OWB_BAD_ARGUMENT:
        return {"the library rejected an argument"};
    case OWB_NO_CONNECTION:
        return {"no connection", true};
    default:
        return {"no answer, or an error without a reason", true};
    }
}

} // namespace agent
