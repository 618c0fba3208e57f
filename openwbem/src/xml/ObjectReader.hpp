#ifndef OPENWBEM_XML_OBJECT_READER_HPP_INCLUDED
#define OPENWBEM_XML_OBJECT_READER_HPP_INCLUDED
#include "OW_CIMClass.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMObjectPath.hpp"
#include "OW_CIMValue.hpp"
#include "io/Limits.hpp"
#include "types/ObjectData.hpp"
#include "xml/Tokenizer.hpp"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace OpenWBEM {
namespace xml {

/**
 * Reads CIM objects from their elements (DSP0201). Call each function at the start tag of its element; it
 * stops at the end tag. Unknown elements and attributes are ignored. Use one reader for a whole document:
 * consecutive instances usually declare the same properties, so the reader caches the declarations by the
 * bytes of their tags and shares them.
 *
 * Throws XMLParseException if the document is malformed or nested too deeply, CIMException INVALID_PARAMETER
 * for a text that is not a value of its type, CIMDateTimeException for a malformed datetime.
 */
class ObjectReader {
public:
    /** The tokenizer must outlive it. */
    explicit ObjectReader(Tokenizer& in)
        : ObjectReader(in, m_own) {}
    ObjectReader(const ObjectReader&) = delete;
    ObjectReader& operator=(const ObjectReader&) = delete;

    /** VALUE.NAMEDINSTANCE: an instance with the keys of its name. */
    CIMInstance namedInstance();
    /** INSTANCE. Its keys are the properties with a true Key qualifier. */
    CIMInstance instance();
    CIMClass classObject();
    /** INSTANCENAME, CLASSNAME, or either in a path with namespace and host. */
    CIMObjectPath objectPath();
    /**
     * VALUE, VALUE.ARRAY, VALUE.REFERENCE or VALUE.REFARRAY. The value is null for a type without a text
     * form, and for a number with the text NULL. A null element of an array becomes empty or zero: arrays
     * cannot contain null.
     *
     * @param isEmbedded whether the texts are instances or classes in XML
     */
    CIMValue value(CIMDataType::Type type, bool isEmbedded = false);

private:
    class Nesting;
    /** Declarations of one instance that are cached for the next one. All further ones share the last slot.
     */
    static constexpr std::size_t maximumCached = 256;
    /** Shared by the readers of nested objects. Limits the cost of a document to a small multiple of its
     * size. */
    struct Budget {
        unsigned depth = 0;
        std::uint64_t received = 0;  // bytes of embedded objects at the first level
        std::uint64_t unescaped = 0; // bytes of embedded objects at all deeper levels
    };
    /** A declaration of the previous instance, and its tag. */
    struct Cached {
        std::string tag;
        detail::Shared<Declaration> declaration;
        bool isEmbedded = false;
    };

    ObjectReader(Tokenizer& in, Budget& budget)
        : m_in(in)
        , m_budget(budget) {}

    /** Appends to a list of an object. Fails beyond io::maximumElements. */
    template <class List, class Element>
    void append(List& list, Element&& element, std::size_t first = 0) {
        if (list.size() - first == io::maximumElements)
            m_in.fail("Too many", "elements of one list");
        list.push_back(std::forward<Element>(element));
    }

    CIMInstance readInstance();
    CIMName className(std::string_view text);
    CIMPropertyArray keys();
    CIMProperty key();
    CIMValue keyValue();
    void pathPart(CIMObjectPath::Data& path, std::string& nameSpace);
    CIMObjectPath reference();

    /** Tag of the next property or key, provided that the instance equals the previous one. */
    std::string_view expectedTag() const;
    bool startsProperty() const;
    CIMProperty property();
    CIMPropertyArray collected(std::size_t first);
    std::size_t declarationIndex();
    detail::Shared<Declaration> newDeclaration() const;
    CIMDataType declaredType() const;
    Qualifier qualifier();
    Method method();
    Parameter parameter();

    CIMValue scalar(CIMDataType::Type type);
    CIMValue array(CIMDataType::Type type);
    template <class T>
    CIMValue arrayOf(CIMDataType::Type type);
    CIMValue referenceArray();
    CIMValue embedded();
    CIMValue embeddedArray();
    CIMValue object(std::string_view text, unsigned line);

    Tokenizer& m_in;
    Budget m_own;
    Budget& m_budget;                     // of the outermost reader
    std::vector<Cached> m_cached;         // in the order of the properties
    std::size_t m_next = 0;               // index into m_cached for the next property of an outermost object
    std::vector<CIMProperty> m_collected; // properties of the current objects, innermost last
    String m_className;                   // of the previous instance
};

} // namespace xml
} // namespace OpenWBEM
#endif
