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
 * Reads CIM objects from their elements (DSP0201). Each function is called at the start tag of its element
 * and passes to the end tag. Elements and attributes that are not known are passed over. One reader serves
 * one document: consecutive instances mostly declare the same properties, which are then recognised by the
 * bytes of their tags, and shared.
 *
 * Throws XMLParseException for what is not well-formed or too deep, CIMException INVALID_PARAMETER for a
 * value whose text is not of its type, CIMDateTimeException for a datetime that is none.
 */
class ObjectReader {
public:
    /** The tokenizer must outlive it. */
    explicit ObjectReader(Tokenizer& in)
        : ObjectReader(in, m_own) {}
    ObjectReader(const ObjectReader&) = delete;
    ObjectReader& operator=(const ObjectReader&) = delete;

    /** VALUE.NAMEDINSTANCE: an instance whose keys come from its name. */
    CIMInstance namedInstance();
    /** INSTANCE. Its keys are the properties with a true Key qualifier. */
    CIMInstance instance();
    CIMClass classObject();
    /** INSTANCENAME, CLASSNAME, or either within a path that gives namespace and host. */
    CIMObjectPath objectPath();
    /**
     * VALUE, VALUE.ARRAY, VALUE.REFERENCE or VALUE.REFARRAY. The value is null for a type that has no text
     * form, and for a number whose text is NULL. An array element that is null, which no array of this
     * library can hold, is an empty or zero one.
     *
     * @param isEmbedded whether texts are instances or classes, in XML themselves
     */
    CIMValue value(CIMDataType::Type type, bool isEmbedded = false);

private:
    class Nesting;
    /** Declarations of an instance that are recognised in the next one. Any more share the last place. */
    static constexpr std::size_t maximumKnown = 256;
    /** What the readers of objects within objects share, so that no document costs more than a small multiple
     * of its size. */
    struct Budget {
        unsigned depth = 0;
        std::uint64_t received = 0;  // bytes of the objects in the document's own texts
        std::uint64_t unescaped = 0; // bytes of the objects in the texts of those, and so on
    };
    /** A declaration of the instance before, and the tag that it was read from. */
    struct Known {
        std::string tag;
        detail::Shared<Declaration> declaration;
        bool isEmbedded = false;
    };

    ObjectReader(Tokenizer& in, Budget& budget)
        : m_in(in)
        , m_budget(budget) {}

    /** Appends to a list of an object, which has its limit. */
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

    /** Tag of the property or key that comes next, if it is as in the instance before. */
    std::string_view expectedTag() const;
    bool startsProperty() const;
    CIMProperty property();
    CIMPropertyArray collected(std::size_t first);
    std::size_t known();
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
    std::vector<Known> m_known;           // in the order in which they were read
    std::size_t m_next = 0;               // of m_known: what the next property of an outermost object may be
    std::vector<CIMProperty> m_collected; // of the objects that are being read, the innermost last
    String m_className;                   // the one before
};

} // namespace xml
} // namespace OpenWBEM
#endif
