#ifndef OPENWBEM_XML_OBJECT_WRITER_HPP_INCLUDED
#define OPENWBEM_XML_OBJECT_WRITER_HPP_INCLUDED
#include "OW_CIMFwd.hpp"
#include "OW_String.hpp"

#include <string>

namespace OpenWBEM {
namespace xml {

// Append one CIM object as its element (DSP0201), without white space between elements. A null object throws
// an OpenWBEM::Exception, a property without a name CIMException FAILED.

/** Whether a KEYVALUE has the attribute TYPE: DTD 2.4 requires it, OpenWBEM clients do not write it. */
enum class KeyType { omitted, written };

/** INSTANCE. */
void write(std::string& out, const CIMInstance& instance, KeyType keyType = KeyType::omitted);
/** VALUE.NAMEDINSTANCE: the instance behind its name, which has the keys of the instance. */
void writeNamed(std::string& out, const CIMInstance& instance, KeyType keyType = KeyType::omitted);
/** INSTANCENAME, whatever namespace and host the path names. */
void writeName(std::string& out, const CIMObjectPath& path, KeyType keyType = KeyType::omitted);
/** The name of the instance, of the class for a path without keys, and as much around it as the path names:
 * its namespace, its host if that is another one. */
void write(std::string& out, const CIMObjectPath& path, KeyType keyType = KeyType::omitted);
/** CLASS. */
void write(std::string& out, const CIMClass& object);
/** PROPERTY and its kin. An object is written as a string that holds its element. */
void write(std::string& out, const CIMProperty& property, KeyType keyType = KeyType::omitted);
/** VALUE and its kin; nothing for the null value. */
void write(std::string& out, const CIMValue& value, KeyType keyType = KeyType::omitted);

/** LOCALNAMESPACEPATH; slashes and backslashes part the names. */
void writeNameSpace(std::string& out, const String& nameSpace);

} // namespace xml
} // namespace OpenWBEM
#endif
