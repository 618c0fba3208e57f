// The exception classes of all headers.
#include "OW_Array.hpp"
#include "OW_CIMDateTime.hpp"
#include "OW_CIMErrorException.hpp"
#include "OW_CIMException.hpp"
#include "OW_CIMValueCast.hpp"
#include "OW_DateTime.hpp"
#include "OW_EnumerationException.hpp"
#include "OW_Exception.hpp"
#include "OW_HTTPException.hpp"
#include "OW_HTTPUtils.hpp"
#include "OW_IOException.hpp"
#include "OW_NULLValueException.hpp"
#include "OW_NoSuchPropertyException.hpp"
#include "OW_SSLException.hpp"
#include "OW_Socket.hpp"
#include "OW_SocketAddress.hpp"
#include "OW_SocketException.hpp"
#include "OW_String.hpp"
#include "OW_URL.hpp"
#include "OW_XMLParseException.hpp"
#include "detail/OW_Shared.hpp"

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <memory>
#include <new>
#include <ostream>
#include <string>
#include <system_error>
#include <utility>

namespace OpenWBEM {
namespace {

// Bytes of a text that an exception copies: a peer chooses the length of its texts.
const std::size_t maximumMessage = 64 * 1024;

// The text, cut at the maximum; "" for a null pointer.
std::string messageText(const char* text) {
    return text ? std::string(text, ::strnlen(text, maximumMessage)) : std::string();
}

// DSP0200, status codes; indexed by code.
const char* const codeTexts[] = {
    "no error",
    "general error",
    "Access to CIM resource unavailable to client",
    "namespace does not exist",
    "invalid parameter passed to method",
    "class does not exist",
    "requested object could not be found",
    "requested operation is not supported",
    "operation cannot be done on class with subclasses",
    "operator cannot be done on class with instances",
    "specified superclass does not exist",
    "object already exists",
    "specified property does not exist",
    "value supplied is incompatible with type",
    "query language is not recognized or supported",
    "query is not valid for the specified query language",
    "extrinsic method could not be executed",
    "extrinsic method does not exist",
};

// The message of an exception with a description. Empty without one, and when out of memory: the text of the
// code then is the message.
std::string messageFor(CIMException::ErrNoType code, const char* description) {
    if (!description || !*description)
        return std::string();
    const char* const text = CIMException::getCodeDescription(code);
    try {
        if (std::strncmp(description, text, std::strlen(text)) == 0)
            return messageText(description);
        return std::string(text) + " (" + messageText(description) + ")";
    } catch (const std::bad_alloc&) {
        return std::string();
    }
}

std::shared_ptr<const std::string> sharedText(const char* text) {
    try {
        return text ? std::make_shared<const std::string>(messageText(text)) : nullptr;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

} // namespace

struct Exception::Texts {
    Texts(const char* theFile, const char* theMessage)
        : file(theFile ? theFile : "")
        , message(messageText(theMessage)) {}

    std::string file;
    std::string message;
    std::unique_ptr<const Exception> other;
};

Exception::Exception(const char* file, int line, const char* msg, int errorCode, const Exception* other,
                     int subClassId)
    : m_line(line)
    , m_errorCode(errorCode)
    , m_subClassId(subClassId) {
    try {
        const auto texts = std::make_shared<Texts>(file, msg);
        m_texts = texts;
        if (other)
            texts->other.reset(other->clone());
    } catch (const std::bad_alloc&) {
        // Out of memory: throw without texts rather than hide the original error.
    }
}

Exception::~Exception() noexcept = default;

void Exception::swap(Exception& other) noexcept {
    std::swap(m_texts, other.m_texts);
    std::swap(m_line, other.m_line);
    std::swap(m_errorCode, other.m_errorCode);
    std::swap(m_subClassId, other.m_subClassId);
}

const char* Exception::type() const {
    return "Exception";
}

const char* Exception::getMessage() const {
    return m_texts ? m_texts->message.c_str() : "";
}

const char* Exception::getFile() const {
    return m_texts ? m_texts->file.c_str() : "";
}

const Exception* Exception::getSubException() const {
    return m_texts ? m_texts->other.get() : nullptr;
}

const char* Exception::what() const noexcept {
    return getMessage();
}

Exception* Exception::clone() const {
    return new Exception(*this);
}

std::ostream& operator<<(std::ostream& out, const Exception& e) {
    const auto orElse = [](const char* text, const char* other) { return *text ? text : other; };
    out << orElse(e.getFile(), "[no file]") << ": ";
    if (e.getLine())
        out << e.getLine();
    else
        out << "[no line]";
    out << ' ' << e.type() << ": " << orElse(e.getMessage(), "[no message]");
    if (e.getSubException())
        out << " <" << *e.getSubException() << '>';
    return out;
}

std::string detail::withErrno(const char* message) {
    const int number = errno;
    return std::string(message) + ": " + std::to_string(number) + '(' +
           std::generic_category().message(number) + ')';
}

CIMException::CIMException(const char* file, int line, ErrNoType code, const char* description,
                           const Exception* other)
    : Exception(file, line, messageFor(code, description).c_str(), code, other, ExceptionIds::CIMExceptionId)
    , m_description(sharedText(description)) {}

CIMException::~CIMException() noexcept = default;

const char* CIMException::type() const {
    return "CIMException";
}

CIMException* CIMException::clone() const {
    return new CIMException(*this);
}

const char* CIMException::getMessage() const {
    const char* const message = Exception::getMessage();
    return *message ? message : getCodeDescription(getErrNo());
}

const char* CIMException::getDescription() const {
    return m_description ? m_description->c_str() : nullptr;
}

const char* CIMException::getCodeDescription(ErrNoType code) {
    const auto index = static_cast<unsigned>(code);
    return index < sizeof codeTexts / sizeof *codeTexts ? codeTexts[index] : "unknown error";
}

OW_DEFINE_EXCEPTION_WITH_ID(CIMDateTime)
OW_DEFINE_EXCEPTION_WITH_ID(CIMError)
OW_DEFINE_EXCEPTION_WITH_ID(DateTime)
OW_DEFINE_EXCEPTION_WITH_ID(Enumeration)
OW_DEFINE_EXCEPTION_WITH_ID(HTTP)
OW_DEFINE_EXCEPTION_WITH_ID(IO)
OW_DEFINE_EXCEPTION2(BadCIMSignature, IOException, ExceptionIds::BadCIMSignatureExceptionId)
OW_DEFINE_EXCEPTION_WITH_ID(MalformedURL)
OW_DEFINE_EXCEPTION_WITH_ID(NULLValue)
OW_DEFINE_EXCEPTION_WITH_ID(NoSuchProperty)
OW_DEFINE_EXCEPTION_WITH_ID(OutOfBounds)
OW_DEFINE_EXCEPTION_WITH_ID(SSL)
OW_DEFINE_EXCEPTION_WITH_ID(Socket)
OW_DEFINE_EXCEPTION_WITH_ID(SocketAddress)
OW_DEFINE_EXCEPTION_WITH_ID(SocketTimeout)
OW_DEFINE_EXCEPTION_WITH_ID(StringConversion)
OW_DEFINE_EXCEPTION_WITH_ID(UnescapeCharForURL)
OW_DEFINE_EXCEPTION_WITH_ID(UnknownHost)
OW_DEFINE_EXCEPTION_WITH_ID(ValueCast)
OW_DEFINE_EXCEPTION(XMLParse)

namespace detail {
namespace {

OW_DECLARE_EXCEPTION(NULLCOWIntrusiveReference)
OW_DEFINE_EXCEPTION_WITH_ID(NULLCOWIntrusiveReference)

} // namespace

void throwNullReference() {
    OW_THROW(NULLCOWIntrusiveReferenceException, "NULL COWReference dereferenced");
}

void throwOutOfBounds(std::size_t size, std::size_t index) {
    const std::string message =
        "Array Index out of bounds. size = " + std::to_string(size) + ", index = " + std::to_string(index);
    OW_THROW(OutOfBoundsException, message.c_str());
}

} // namespace detail
} // namespace OpenWBEM
