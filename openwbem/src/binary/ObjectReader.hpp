#ifndef OPENWBEM_BINARY_OBJECT_READER_HPP_INCLUDED
#define OPENWBEM_BINARY_OBJECT_READER_HPP_INCLUDED
#include "OW_CIMClass.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMValue.hpp"
#include "OW_IOException.hpp"
#include "binary/Reader.hpp"
#include "io/Limits.hpp"
#include "types/ObjectData.hpp"

#include <algorithm>
#include <string>
#include <vector>

namespace OpenWBEM {
namespace binary {

/**
 * Reads CIM objects. One reader serves one message: consecutive instances mostly declare the same properties,
 * which are then recognised by their bytes, and shared.
 *
 * Throws IOException for a malformed object, StringConversionException for a real that is no number.
 */
class ObjectReader {
public:
    explicit ObjectReader(Reader& in)
        : m_in(in) {}

    CIMInstance instance();
    CIMObjectPath objectPath();
    CIMClass classObject();
    CIMValue value();

private:
    class Nesting;
    /** A declaration of the instance before, and the bytes that it was read from. */
    struct Known {
        std::string bytes;
        detail::Shared<Declaration> declaration;
    };

    CIMInstance bare(const CIMInstance& instance);
    CIMPropertyArray properties();
    CIMProperty property();
    detail::Shared<Declaration> declaration();
    detail::Shared<Declaration> newDeclaration();
    CIMDataType dataType();
    QualifierArray qualifiers();
    Qualifier qualifier();
    Method method();
    Parameter parameter();
    Int32Array numbers();
    CIMValue optionalValue();
    UInt32 version(UInt8 unversioned, UInt8 versioned, UInt32 highest);
    CIMName name() { return m_in.string(); }

    template <class T>
    T element();
    template <class T>
    CIMValue valueOf(bool isArray);
    template <class T, class Read>
    Array<T> array(Read read);

    Reader& m_in;
    unsigned m_depth = 0;
    std::vector<Known> m_known;  // in the order in which they were read
    std::size_t m_next = 0;      // of m_known: what the next property of an outermost object may be
    CIMName m_className;         // of the instance before
    CIMInstance m_bare{CIMNULL}; // the last one that had nothing
};

// A count is believed only as far as elements follow. The first ones get their memory at once.
template <class T, class Read>
Array<T> ObjectReader::array(Read read) {
    const UInt32 size = m_in.number();
    Array<T> elements;
    if (size > 0)
        elements.reserve(std::min<UInt32>(size, 64));
    for (UInt32 i = 0; i < size; ++i) {
        if (i == io::maximumElements)
            OW_THROW(IOException, "Failed reading data: too many elements");
        elements.push_back(read());
    }
    return elements;
}

} // namespace binary
} // namespace OpenWBEM
#endif
