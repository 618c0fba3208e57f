#include "protocol/BinaryHandler.hpp"

#include "OW_CIMException.hpp"
#include "binary/ObjectWriter.hpp"
#include "binary/Protocol.hpp"
#include "binary/Reader.hpp"
#include "protocol/OperationNames.hpp"

#include <exception>

namespace cimom {

using namespace OpenWBEM;
using binary::Reader;
using binary::Writer;

namespace {

bool booleanArgument(Reader& in) {
    in.expect(binary::sig::boolean);
    return in.boolean();
}

String stringArgument(Reader& in) {
    in.expect(binary::sig::string);
    return in.string();
}

std::optional<PropertyList> propertyListArgument(Reader& in) {
    const bool isNull = booleanArgument(in);
    if (isNull)
        return std::nullopt;
    in.expect(binary::sig::stringArray);
    PropertyList names;
    for (UInt32 count = in.number(); count > 0; --count)
        names.push_back(in.string());
    return names;
}

std::string enumerateInstances(Reader& in, const ObjectManager& manager) {
    const String nameSpace = stringArgument(in);
    const CIMName className = stringArgument(in);
    // Deep, local only, qualifiers, class origin: none changes anything for classes without subclasses and
    // qualifiers.
    for (int flag = 0; flag < 4; ++flag)
        booleanArgument(in);
    const std::optional<PropertyList> wanted = propertyListArgument(in);

    Writer out;
    out.u8(static_cast<UInt8>(binary::Result::ok));
    out.u8(binary::sig::instanceEnumeration);
    for (const CIMInstance& instance :
         manager.enumerateInstances(nameSpace.c_str(), className, wanted ? &*wanted : nullptr))
        binary::write(out, instance);
    out.u8(binary::sig::endOfInstances);
    out.u8(binary::sig::endOfInstances);
    return out.release();
}

/** The reply to a request; empty when its operation has no name. Throws what makes it fail. */
std::string carryOut(Reader& in, const ObjectManager& manager) {
    const UInt32 version = in.u32();
    if (version < binary::lowestVersion || version > binary::version)
        OW_THROWCIMMSG(CIMException::FAILED, "general error (Incompatible version)");
    const UInt8 operation = in.u8();
    if (operation == static_cast<UInt8>(binary::Operation::enumerateInstances))
        return enumerateInstances(in, manager);
    if (const char* const name = operationName(operation))
        OW_THROWCIMMSG(CIMException::NOT_SUPPORTED, name);
    return std::string();
}

OperationReply failure(const CIMException& e) {
    Writer out;
    out.u8(static_cast<UInt8>(binary::Result::exception));
    out.u16(static_cast<UInt16>(e.getErrNo()));
    out.string(e.getMessage());
    const char* const description = e.getDescription();
    return {out.release(),
            OperationError{static_cast<unsigned>(e.getErrNo()), description ? description : ""}};
}

OperationReply failure(const std::exception& e) {
    Writer out;
    out.u8(static_cast<UInt8>(binary::Result::error));
    out.string(e.what());
    return {out.release(), OperationError{CIMException::FAILED, e.what()}};
}

} // namespace

OperationReply BinaryHandler::handle(std::string_view request) const {
    Reader in(request.data(), request.size());
    try {
        return {carryOut(in, m_manager), std::nullopt};
    } catch (const CIMException& e) {
        return failure(e);
    } catch (const std::exception& e) {
        return failure(e);
    }
}

} // namespace cimom
