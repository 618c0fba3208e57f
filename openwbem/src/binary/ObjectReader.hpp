#ifndef OPENWBEM_BINARY_OBJECT_READER_HPP_INCLUDED
#define OPENWBEM_BINARY_OBJECT_READER_HPP_INCLUDED
#include "OW_CIMInstance.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMValue.hpp"
#include "binary/Reader.hpp"

#include <string_view>
#include <vector>

namespace OpenWBEM {
namespace binary {

/**
 * Reads CIM objects. One reader serves one message: the names of consecutive instances, which mostly repeat,
 * are then stored once and shared.
 *
 * Throws IOException for a malformed object, StringConversionException for a real that is no number.
 */
class ObjectReader {
public:
    explicit ObjectReader(Reader& in)
        : m_in(in) {}

    CIMInstance instance();
    CIMObjectPath objectPath();
    CIMValue value();

private:
    class Nesting;

    CIMPropertyArray properties();
    CIMProperty property();
    CIMDataType dataType();
    void skipQualifiers();
    void skipQualifier();
    void skipNumbers();
    UInt32 version(UInt8 unversioned, UInt8 versioned, UInt32 highest);
    CIMName name();

    template <class T>
    T element();
    template <class T>
    CIMValue valueOf(bool isArray);

    Reader& m_in;
    unsigned m_depth = 0;
    std::vector<CIMName> m_names; // of the instance before, in the order in which they were read
    std::size_t m_nextName = 0;
};

} // namespace binary
} // namespace OpenWBEM
#endif
