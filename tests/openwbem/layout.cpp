// The sizes of the classes in installed headers, which compiled agents contain: the same on every 32-bit
// platform and for every width of time_t.
#include "OW_CIMClass.hpp"
#include "OW_CIMClient.hpp"
#include "OW_CIMDateTime.hpp"
#include "OW_CIMErrorException.hpp"
#include "OW_CIMInstanceEnumeration.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMProperty.hpp"
#include "OW_Char16.hpp"
#include "OW_DateTime.hpp"
#include "OW_HTTPException.hpp"
#include "OW_SocketException.hpp"
#include "OW_URL.hpp"

namespace {

using namespace OpenWBEM;

template <class Type>
constexpr bool has(std::size_t size, std::size_t alignment = 4) {
    return sizeof(void*) != 4 || (sizeof(Type) == size && alignof(Type) == alignment);
}

static_assert(has<Bool>(1, 1), "Bool");
static_assert(has<Char16>(2, 2), "Char16");
static_assert(has<String>(4), "String");
static_assert(has<StringArray>(4), "Array");
static_assert(has<UInt64Array>(4), "Array of 64-bit numbers");
static_assert(has<DateTime>(8), "DateTime");
static_assert(has<URL>(32), "URL");

static_assert(has<CIMBase>(4), "CIMBase");
static_assert(has<CIMElement>(4), "CIMElement");
static_assert(has<CIMName>(4), "CIMName");
static_assert(has<CIMClass>(8), "CIMClass");
static_assert(has<CIMInstance>(8), "CIMInstance");
static_assert(has<CIMObjectPath>(8), "CIMObjectPath");
static_assert(has<CIMProperty>(24), "CIMProperty");
static_assert(has<CIMValue>(16), "CIMValue");
static_assert(has<CIMDataType>(20), "CIMDataType");
static_assert(has<CIMDateTime>(20), "CIMDateTime");
static_assert(has<CIMInstanceEnumeration>(8), "CIMInstanceEnumeration");

static_assert(has<CIMClient>(8), "CIMClient");
static_assert(has<ClientAuthCBIFC>(8), "ClientAuthCBIFC");
static_assert(has<IntrusiveCountableBase>(8), "IntrusiveCountableBase");

static_assert(has<Exception>(24), "Exception");
static_assert(has<CIMErrorException>(24), "CIMErrorException");
static_assert(has<DateTimeException>(24), "DateTimeException");
static_assert(has<HTTPException>(24), "HTTPException");
static_assert(has<SocketException>(24), "SocketException");

} // namespace
