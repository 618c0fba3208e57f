#include "OW_CIMException.hpp"

#include "MessageText.hpp"

#include <cstring>
#include <new>
#include <string>

namespace OpenWBEM {
namespace {

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

// The message where it is more than the text of the code; empty also for want of memory.
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

std::shared_ptr<const std::string> share(const char* text) {
    try {
        return text ? std::make_shared<const std::string>(messageText(text)) : nullptr;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

} // namespace

CIMException::CIMException(const char* file, int line, ErrNoType code, const char* description,
                           const Exception* other)
    : Exception(file, line, messageFor(code, description).c_str(), code, other, ExceptionIds::CIMExceptionId)
    , m_description(share(description)) {}

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

} // namespace OpenWBEM
