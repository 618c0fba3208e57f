#include "protocol/BinaryHandler.hpp"

#include "OW_CIMException.hpp"
#include "binary/ObjectReader.hpp"
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

/** Flags that change nothing for classes without subclasses and qualifiers: deep, local only and the like. */
void ignoreFlags(Reader& in, int count) {
    for (; count > 0; --count)
        booleanArgument(in);
}

/** A reply that says that the operation was carried out, and whose result is to follow. */
Writer done() {
    Writer out;
    out.u8(static_cast<UInt8>(binary::Result::ok));
    return out;
}

template <class Source>
std::string enumeration(const Source& next, UInt8 begin, UInt8 end) {
    Writer out = done();
    out.u8(begin);
    while (const auto object = next())
        binary::write(out, object);
    out.u8(end);
    out.u8(end);
    return out.release();
}

std::string enumerateInstances(Reader& in, const ObjectManager& manager) {
    const String nameSpace = stringArgument(in);
    const CIMName className = stringArgument(in);
    ignoreFlags(in, 4);
    const std::optional<PropertyList> wanted = propertyListArgument(in);
    return enumeration(manager.enumerateInstances(nameSpace.c_str(), className, wanted ? &*wanted : nullptr),
                       binary::sig::instanceEnumeration, binary::sig::endOfInstances);
}

std::string enumerateInstanceNames(Reader& in, const ObjectManager& manager) {
    const String nameSpace = stringArgument(in);
    const CIMName className = stringArgument(in);
    return enumeration(manager.enumerateInstanceNames(nameSpace.c_str(), className),
                       binary::sig::pathEnumeration, binary::sig::endOfPaths);
}

std::string getInstance(Reader& in, const ObjectManager& manager) {
    const String nameSpace = stringArgument(in);
    const CIMObjectPath path = binary::ObjectReader(in).objectPath();
    ignoreFlags(in, 3);
    const std::optional<PropertyList> wanted = propertyListArgument(in);
    Writer out = done();
    binary::write(out, manager.getInstance(nameSpace.c_str(), path, wanted ? &*wanted : nullptr));
    return out.release();
}

std::string modifyInstance(Reader& in, ObjectManager& manager, Access access) {
    const String nameSpace = stringArgument(in);
    const CIMInstance modified = binary::ObjectReader(in).instance();
    ignoreFlags(in, 1);
    const std::optional<PropertyList> listed = propertyListArgument(in);
    manager.modifyInstance(nameSpace.c_str(), modified, listed ? &*listed : nullptr, access);
    return done().release();
}

/** The reply to a request; empty when its operation has no name. Throws what makes it fail. */
std::string carryOut(Reader& in, ObjectManager& manager, Access access) {
    const UInt32 version = in.u32();
    if (version < binary::lowestVersion || version > binary::version)
        OW_THROWCIMMSG(CIMException::FAILED, "general error (Incompatible version)");
    const UInt8 operation = in.u8();
    switch (static_cast<binary::Operation>(operation)) {
    case binary::Operation::enumerateInstances:
        return enumerateInstances(in, manager);
    case binary::Operation::enumerateInstanceNames:
        return enumerateInstanceNames(in, manager);
    case binary::Operation::getInstance:
        return getInstance(in, manager);
    case binary::Operation::modifyInstance:
        return modifyInstance(in, manager, access);
    }
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

OperationReply BinaryHandler::handle(std::string_view request, Access access) const {
    Reader in(request.data(), request.size());
    try {
        return {carryOut(in, m_manager, access), std::nullopt};
    } catch (const CIMException& e) {
        return failure(e);
    } catch (const std::exception& e) {
        return failure(e);
    }
}

} // namespace cimom
