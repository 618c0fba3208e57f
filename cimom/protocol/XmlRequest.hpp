#ifndef CIMOM_PROTOCOL_XML_REQUEST_HPP_INCLUDED
#define CIMOM_PROTOCOL_XML_REQUEST_HPP_INCLUDED
#include "OW_CIMInstance.hpp"
#include "OW_CIMNULL.hpp"
#include "OW_CIMObjectPath.hpp"
#include "schema/PropertyFilter.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cimom {

/** An argument of an operation: its name and one value; VALUE.NAMEDINSTANCE has a path and an instance. */
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
    /** Identifier of the message; the reply repeats it. */
    std::string messageId;
    /** Name of the operation as the client writes it. */
    std::string operation;
    /** The operation is a method of a class (METHODCALL), not one of DSP0200. */
    bool isExtrinsic = false;
    /** Names separated by slashes. */
    std::string nameSpace;
    std::vector<XmlArgument> arguments;

    /** The argument with a name, compared without case; null if the request has none. */
    const XmlArgument* find(std::string_view name) const;
};

/**
 * Reads a whole document. Throws UnreadableRequest if it is not well-formed or not a request for a single
 * operation, and CIMException INVALID_PARAMETER if a value in it is invalid.
 *
 * @param request gets what has been read, also if this throws CIMException
 */
void readXmlRequest(std::string_view document, XmlRequest& request);

} // namespace cimom
#endif
