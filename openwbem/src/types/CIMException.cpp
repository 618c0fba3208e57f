#include "OW_CIMException.hpp"

#include <cstring>
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

std::string messageFor(CIMException::ErrNoType code, const char* description) {
    const char* const text = CIMException::getCodeDescription(code);
    if (!description || !*description)
        return text;
    if (std::strncmp(description, text, std::strlen(text)) == 0)
        return description;
    return std::string(text) + " (" + description + ")";
}

} // namespace

CIMException::CIMException(const char* file, int line, ErrNoType code, const char* description,
                           const Exception* other)
    : Exception(file, line, messageFor(code, description).c_str(), code, other, 1)
    , m_description(description ? std::make_shared<const std::string>(description) : nullptr) {}

CIMException::~CIMException() noexcept = default;

const char* CIMException::type() const {
    return "CIMException";
}

const char* CIMException::getDescription() const {
    return m_description ? m_description->c_str() : nullptr;
}

const char* CIMException::getCodeDescription(ErrNoType code) {
    const auto index = static_cast<unsigned>(code);
    return index < sizeof codeTexts / sizeof *codeTexts ? codeTexts[index] : "unknown error";
}

} // namespace OpenWBEM
