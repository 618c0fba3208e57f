#ifndef OPENWBEM_XML_NESTING_HPP_INCLUDED
#define OPENWBEM_XML_NESTING_HPP_INCLUDED
#include "io/Limits.hpp"
#include "xml/ObjectReader.hpp"

namespace OpenWBEM {
namespace xml {

/** Counts the nesting depth and throws XMLParseException beyond the limit. An outermost object restarts the
 * reader's walk through its cached declarations. */
class ObjectReader::Nesting {
public:
    explicit Nesting(ObjectReader& reader)
        : m_depth(reader.m_budget.depth) {
        if (m_depth == io::maximumDepth)
            reader.m_in.fail("Too deep", "objects are nested too deeply");
        if (m_depth == 0)
            reader.m_next = 0;
        ++m_depth;
    }
    ~Nesting() { --m_depth; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

private:
    unsigned& m_depth;
};

} // namespace xml
} // namespace OpenWBEM
#endif
