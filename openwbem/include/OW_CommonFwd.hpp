#ifndef OW_COMMON_FWD_HPP_INCLUDED
#define OW_COMMON_FWD_HPP_INCLUDED
#include "OW_ArrayFwd.hpp"

namespace OpenWBEM {

class String;
typedef Array<String> StringArray;
class Char16;
typedef Array<Char16> Char16Array;
class Bool;
typedef Array<Bool> BoolArray;
class DateTime;
class Exception;
template <class T>
class Enumeration;
typedef Enumeration<String> StringEnumeration;

} // namespace OpenWBEM
#endif
