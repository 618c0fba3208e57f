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
 * Reads CIM objects. Use one reader for a whole message: consecutive instances usually declare the same
 * properties, so the reader caches the declarations by their bytes and shares them.
 *
 * Throws IOException for a malformed object, StringConversionException for a real that is not a number.
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
    /** A declaration of the previous instance, and its encoded bytes. */
    struct Cached {
        std::string bytes;
        detail::Shared<Declaration> declaration;
    };

    CIMInstance sharedEmpty(const CIMInstance& instance);
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
    std::vector<Cached> m_cached; // in the order of the properties
    std::size_t m_next = 0;       // index into m_cached for the next property of an outermost object
    CIMName m_className;          // of the previous instance
    CIMInstance m_empty{CIMNULL}; // the last empty instance
};

// Memory grows with the elements that arrive: the announced size reserves at most 64 elements.
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
