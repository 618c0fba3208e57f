#ifndef OW_EXCEPTION_IDS_HPP_INCLUDED
#define OW_EXCEPTION_IDS_HPP_INCLUDED
#include "OW_config.h"

namespace OpenWBEM {

/** Numbers of the exception classes, see Exception::getSubClassId(). */
namespace ExceptionIds {

static const int CIMExceptionId = 1;
static const int CIMErrorExceptionId = 2;
static const int HTTPExceptionId = 3;
static const int ValueCastExceptionId = 6;
static const int UnknownHostExceptionId = 9;
static const int SocketAddressExceptionId = 10;
static const int SocketExceptionId = 11;
static const int SocketTimeoutExceptionId = 12;
static const int NULLCOWReferenceExceptionId = 16;
static const int DateTimeExceptionId = 17;
static const int EnumerationExceptionId = 18;
static const int IOExceptionId = 22;
static const int BadCIMSignatureExceptionId = 23;
static const int NoSuchPropertyExceptionId = 26;
static const int NULLValueExceptionId = 29;
static const int OutOfBoundsExceptionId = 31;
static const int NULLReferenceExceptionId = 34;
static const int StringConversionExceptionId = 37;
static const int MalformedURLExceptionId = 42;
static const int NULLCOWIntrusiveReferenceExceptionId = 47;
static const int CIMDateTimeExceptionId = 49;
static const int SSLExceptionId = 51;
static const int UnescapeCharForURLExceptionId = 1002;

} // namespace ExceptionIds
} // namespace OpenWBEM
#endif
