#ifndef OPENWBEM_PATH_TEXT_HPP_INCLUDED
#define OPENWBEM_PATH_TEXT_HPP_INCLUDED
#include "OW_String.hpp"

namespace OpenWBEM {

/** Whether a path's host is the one of the object manager that the path is from. */
bool isLocalHost(const String& host);

/** A namespace without blanks at its ends and slashes in front. */
String cleanNameSpace(const String& nameSpace);

} // namespace OpenWBEM
#endif
