#ifndef OPENWBEM_XML_OBJECT_WRITER_HPP_INCLUDED
#define OPENWBEM_XML_OBJECT_WRITER_HPP_INCLUDED
#include "OW_CIMFwd.hpp"
#include "OW_String.hpp"

#include <string>

namespace OpenWBEM {
namespace xml {

// Append a CIM object as its element (DSP0201), without white space between elements. Throw an
// OpenWBEM::Exception for a null object, CIMException FAILED for a property without a name.

/** Whether to write the attribute TYPE of KEYVALUE: DTD 2.4 requires it, OpenWBEM clients omit it. */
enum class KeyType { omitted, written };

/** INSTANCE. */
void write(std::string& out, const CIMInstance& instance, KeyType keyType = KeyType::omitted);
/** VALUE.NAMEDINSTANCE: the name, made of class and keys, and the instance. */
void writeNamed(std::string& out, const CIMInstance& instance, KeyType keyType = KeyType::omitted);
/** INSTANCENAME; ignores namespace and host of the path. */
void writeName(std::string& out, const CIMObjectPath& path, KeyType keyType = KeyType::omitted);
/** INSTANCENAME, or CLASSNAME for a path without keys, in an element with the namespace and the host of the
 * path, if it has any. */
void write(std::string& out, const CIMObjectPath& path, KeyType keyType = KeyType::omitted);
/** CLASS. */
void write(std::string& out, const CIMClass& object);
/** PROPERTY, PROPERTY.ARRAY or PROPERTY.REFERENCE. An embedded object becomes a string with its element. */
void write(std::string& out, const CIMProperty& property, KeyType keyType = KeyType::omitted);
/** VALUE, VALUE.ARRAY, VALUE.REFERENCE or VALUE.REFARRAY; nothing for the null value. */
void write(std::string& out, const CIMValue& value, KeyType keyType = KeyType::omitted);

/** LOCALNAMESPACEPATH; slashes and backslashes separate the names. */
void writeNameSpace(std::string& out, const String& nameSpace);

} // namespace xml
} // namespace OpenWBEM
#endif
