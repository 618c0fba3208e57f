#ifndef OW_TYPES_HPP_INCLUDED
#define OW_TYPES_HPP_INCLUDED
#include "OW_config.h"
#include <sys/types.h>

namespace OpenWBEM {

/** The numeric types of CIM (DSP0004, intrinsic data types). */
typedef unsigned char UInt8;
typedef signed char Int8;
typedef unsigned short UInt16;
typedef short Int16;
typedef unsigned int UInt32;
typedef int Int32;
typedef unsigned long long UInt64;
typedef long long Int64;
typedef float Real32;
typedef double Real64;

/** Numbers of open files, users and processes. */
typedef int FileHandle;
typedef int Select_t;
typedef uid_t UserId;
typedef pid_t ProcId;

} // namespace OpenWBEM
#endif
