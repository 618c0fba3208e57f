#ifndef CIMOM_PROTOCOL_XML_REQUEST_HPP_INCLUDED
#define CIMOM_PROTOCOL_XML_REQUEST_HPP_INCLUDED
#include "OW_CIMInstance.hpp"
#include "OW_CIMNULL.hpp"
#include "OW_CIMObjectPath.hpp"
#include "objects/ObjectManager.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cimom {

/** An argument of an operation: its name, and what its element gives a value to; of a VALUE.NAMEDINSTANCE
 * path and instance, else one of them. */
struct XmlArgument {
    std::string name;
    std::optional<std::string> text;                   // VALUE
    std::optional<PropertyList> list;                  // VALUE.ARRAY
    std::optional<std::string> className;              // CLASSNAME
    OpenWBEM::CIMObjectPath path{OpenWBEM::CIMNULL};   // INSTANCENAME, also that of VALUE.NAMEDINSTANCE
    OpenWBEM::CIMInstance instance{OpenWBEM::CIMNULL}; // VALUE.NAMEDINSTANCE
};

/** A request in CIM-XML for one operation (DSP0200, SIMPLEREQ). */
struct XmlRequest {
    /** Number of the message, which the reply repeats. */
    std::string messageId;
    /** Name of the operation as the client writes it. */
    std::string operation;
    /** The operation is a method of a class (METHODCALL), not one of DSP0200. */
    bool isExtrinsic = false;
    /** Its names parted by slashes. */
    std::string nameSpace;
    std::vector<XmlArgument> arguments;

    /** The argument of a name in any case of its letters; null when it is not given. */
    const XmlArgument* find(std::string_view name) const;
};

/**
 * Reads a document whole. Throws UnreadableRequest for one that is not well-formed or no request for a single
 * operation, and CIMException INVALID_PARAMETER for an object in it whose value is none.
 *
 * @param request what has been read, also when it throws CIMException
 */
void readXmlRequest(std::string_view document, XmlRequest& request);

} // namespace cimom
#endif
