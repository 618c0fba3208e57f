#ifndef OPENWBEM_BINARY_OBJECT_WRITER_HPP_INCLUDED
#define OPENWBEM_BINARY_OBJECT_WRITER_HPP_INCLUDED
#include "OW_CIMFwd.hpp"
#include "binary/Writer.hpp"

namespace OpenWBEM {
namespace binary {

/**
 * Append one CIM object. Instances are written in version 1. A null object
 * throws an OpenWBEM::Exception: the protocol has no form for it.
 */
void write(Writer& out, const CIMInstance& instance);
void write(Writer& out, const CIMObjectPath& path);
void write(Writer& out, const CIMClass& object);
void write(Writer& out, const CIMProperty& property);
void write(Writer& out, const CIMValue& value);

} // namespace binary
} // namespace OpenWBEM
#endif
