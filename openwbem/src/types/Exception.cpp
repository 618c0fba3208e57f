#include "OW_Exception.hpp"

#include "OW_CIMDateTime.hpp"
#include "OW_CIMErrorException.hpp"
#include "OW_CIMValueCast.hpp"
#include "OW_EnumerationException.hpp"
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

#include <ostream>
#include <string>

namespace OpenWBEM {

struct Exception::Data {
    std::string file;
    std::string message;
    int line;
    int errorCode;
    int subClassId;
};

Exception::Exception(const char* file, int line, const char* msg, int errorCode, const Exception* other,
                     int subClassId)
    : m_data(std::make_shared<const Data>(Data{
          file ? file : "", msg ? msg : (other ? other->getMessage() : ""), line, errorCode, subClassId})) {}

Exception::~Exception() noexcept = default;

const char* Exception::type() const {
    return "Exception";
}

const char* Exception::getMessage() const {
    return m_data->message.c_str();
}

const char* Exception::getFile() const {
    return m_data->file.c_str();
}

int Exception::getLine() const {
    return m_data->line;
}

int Exception::getErrorCode() const {
    return m_data->errorCode;
}

int Exception::getSubClassId() const {
    return m_data->subClassId;
}

const char* Exception::what() const noexcept {
    return getMessage();
}

std::ostream& operator<<(std::ostream& out, const Exception& e) {
    return out << e.getFile() << ": " << e.getLine() << ' ' << e.type() << ": " << e.getMessage();
}

OW_DEFINE_EXCEPTION(CIMError, 2)
OW_DEFINE_EXCEPTION(HTTP, 3)
OW_DEFINE_EXCEPTION(ValueCast, 6)
OW_DEFINE_EXCEPTION(UnknownHost, 9)
OW_DEFINE_EXCEPTION(SocketAddress, 10)
OW_DEFINE_EXCEPTION(Socket, 11)
OW_DEFINE_EXCEPTION(SocketTimeout, 12)
OW_DEFINE_EXCEPTION(Enumeration, 18)
OW_DEFINE_EXCEPTION(IO, 22)
OW_DEFINE_EXCEPTION(NoSuchProperty, 26)
OW_DEFINE_EXCEPTION(NULLValue, 29)
OW_DEFINE_EXCEPTION(OutOfBounds, 31)
OW_DEFINE_EXCEPTION(StringConversion, 37)
OW_DEFINE_EXCEPTION(MalformedURL, 42)
OW_DEFINE_EXCEPTION(CIMDateTime, 49)
OW_DEFINE_EXCEPTION(SSL, 51)
OW_DEFINE_EXCEPTION(UnescapeCharForURL, 1002)
OW_DEFINE_EXCEPTION(XMLParse, -1)

namespace detail {
namespace {

OW_DECLARE_EXCEPTION(NULLCOWIntrusiveReference)
OW_DEFINE_EXCEPTION(NULLCOWIntrusiveReference, 47)

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
