// The exception classes of all headers, and the throwing of those that are thrown in many places.
#include "OW_Array.hpp"
#include "OW_CIMDateTime.hpp"
#include "OW_CIMErrorException.hpp"
#include "OW_CIMValueCast.hpp"
#include "OW_DateTime.hpp"
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

#include <cstddef>
#include <string>

namespace OpenWBEM {

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
