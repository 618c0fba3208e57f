#include "protocol/BinaryHandler.hpp"

#include "OW_CIMException.hpp"
#include "binary/ObjectReader.hpp"
#include "binary/ObjectWriter.hpp"
#include "binary/Protocol.hpp"
#include "binary/Reader.hpp"
#include "protocol/OperationNames.hpp"
#include "system/Text.hpp"

#include <exception>
#include <memory>
#include <stdexcept>
#include <utility>

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

/** Flags that change nothing for classes without subclasses: deep, local only and the like. */
void ignoreFlags(Reader& in, int count) {
    for (; count > 0; --count)
        booleanArgument(in);
}

ClassOrigin originArgument(Reader& in) {
    return booleanArgument(in) ? ClassOrigin::included : ClassOrigin::excluded;
}

ClassDetails classDetails(Reader& in) {
    ClassDetails details;
    details.qualifiers = booleanArgument(in);
    details.origin = booleanArgument(in);
    return details;
}

/** A name as an element of an enumeration. */
void write(Writer& out, const String& name) {
    out.stringArgument(name);
}
using binary::write;

/** The elements of an enumeration, and its end. */
template <class Object>
class Elements : public ReplyPieces {
public:
    Elements(std::unique_ptr<Source<Object>> objects, UInt8 end)
        : m_objects(std::move(objects))
        , m_end(end) {}

    bool appendNext(std::string& body) override {
        Writer piece;
        const Object object = m_objects->next();
        if (object) {
            write(piece, object);
        } else {
            piece.u8(m_end);
            piece.u8(m_end);
        }
        body += piece.bytes();
        return static_cast<bool>(object);
    }

private:
    std::unique_ptr<Source<Object>> m_objects;
    UInt8 m_end;
};

/** One request: reads its arguments and carries it out. */
class Call {
public:
    Call(std::string_view request, ObjectManager& manager, Access access)
        : m_in(request.data(), request.size())
        , m_manager(manager)
        , m_access(access) {}

    /** The reply; what makes the operation fail is in it. */
    OperationReply reply() {
        try {
            carryOut();
        } catch (const CIMException& e) {
            fail(e, binary::Result::exception);
        } catch (const std::exception& e) {
            fail(e, binary::Result::error);
        }
        return std::move(m_reply);
    }

private:
    void carryOut();
    void enumerateClasses();
    void enumerateClassNames();
    void enumerateInstances();
    void enumerateInstanceNames();
    void getClass();
    void getInstance();
    void getProperty();
    void modifyInstance();

    std::string nameSpaceArgument() { return stringArgument(m_in).c_str(); }
    CIMName classArgument() {
        String name = stringArgument(m_in);
        m_reply.title += std::string(" ") + name.c_str();
        return name;
    }
    CIMObjectPath pathArgument() {
        CIMObjectPath path = binary::ObjectReader(m_in).objectPath();
        m_reply.title += std::string(" ") + path.getClassName().c_str();
        return path;
    }

    /** The reply to an operation that returns nothing, and the beginning of others. */
    Writer done() {
        Writer out;
        out.u8(static_cast<UInt8>(binary::Result::ok));
        return out;
    }
    template <class Object>
    void replyBy(std::unique_ptr<Source<Object>> objects, UInt8 begin, UInt8 end);
    template <class Object>
    void replyBy(const std::vector<Object>& objects, UInt8 begin, UInt8 end);
    void fail(const std::exception& e, binary::Result result);

    Reader m_in;
    ObjectManager& m_manager;
    Access m_access;
    OperationReply m_reply;
};

void Call::carryOut() {
    const UInt32 version = m_in.u32();
    if (version < binary::lowestVersion || version > binary::version)
        throw std::runtime_error("general error (Incompatible version)");
    const UInt8 operation = m_in.u8();
    const char* const name = operationName(operation);
    m_reply.title = name ? name : "unknown operation " + std::to_string(operation);
    switch (static_cast<binary::Operation>(operation)) {
    case binary::Operation::enumerateClasses:
        return enumerateClasses();
    case binary::Operation::enumerateClassNames:
        return enumerateClassNames();
    case binary::Operation::enumerateInstances:
        return enumerateInstances();
    case binary::Operation::enumerateInstanceNames:
        return enumerateInstanceNames();
    case binary::Operation::getClass:
        return getClass();
    case binary::Operation::getInstance:
        return getInstance();
    case binary::Operation::modifyInstance:
        return modifyInstance();
    case binary::Operation::getProperty:
        return getProperty();
    }
    if (name)
        OW_THROWCIMMSG(CIMException::NOT_SUPPORTED, name);
    // An unknown operation is answered by nothing.
}

void Call::enumerateClasses() {
    const std::string nameSpace = nameSpaceArgument();
    const CIMName className = classArgument();
    ignoreFlags(m_in, 2);
    replyBy(m_manager.enumerateClasses(nameSpace, className, classDetails(m_in)),
            binary::sig::classEnumeration, binary::sig::endOfClasses);
}

void Call::enumerateClassNames() {
    const std::string nameSpace = nameSpaceArgument();
    const CIMName className = classArgument();
    ignoreFlags(m_in, 1);
    std::vector<String> names;
    for (const CIMClass& each : m_manager.enumerateClasses(nameSpace, className, ClassDetails()))
        names.push_back(each.getName());
    replyBy(names, binary::sig::stringEnumeration, binary::sig::endOfStrings);
}

void Call::enumerateInstances() {
    const std::string nameSpace = nameSpaceArgument();
    const CIMName className = classArgument();
    ignoreFlags(m_in, 3);
    const ClassOrigin origin = originArgument(m_in);
    const std::optional<PropertyList> wanted = propertyListArgument(m_in);
    replyBy(m_manager.enumerateInstances(nameSpace, className, orNull(wanted), origin),
            binary::sig::instanceEnumeration, binary::sig::endOfInstances);
}

void Call::enumerateInstanceNames() {
    const std::string nameSpace = nameSpaceArgument();
    const CIMName className = classArgument();
    replyBy(m_manager.enumerateInstanceNames(nameSpace, className), binary::sig::pathEnumeration,
            binary::sig::endOfPaths);
}

void Call::getClass() {
    const std::string nameSpace = nameSpaceArgument();
    const CIMName className = classArgument();
    ignoreFlags(m_in, 1);
    const ClassDetails details = classDetails(m_in);
    const std::optional<PropertyList> wanted = propertyListArgument(m_in);
    Writer out = done();
    write(out, m_manager.getClass(nameSpace, className, details, orNull(wanted)));
    m_reply.body = out.release();
}

void Call::getInstance() {
    const std::string nameSpace = nameSpaceArgument();
    const CIMObjectPath path = pathArgument();
    ignoreFlags(m_in, 2);
    const ClassOrigin origin = originArgument(m_in);
    const std::optional<PropertyList> wanted = propertyListArgument(m_in);
    Writer out = done();
    write(out, m_manager.getInstance(nameSpace, path, orNull(wanted), origin));
    m_reply.body = out.release();
}

void Call::getProperty() {
    const std::string nameSpace = nameSpaceArgument();
    const CIMObjectPath path = pathArgument();
    const CIMValue value = m_manager.getProperty(nameSpace, path, stringArgument(m_in));
    Writer out = done();
    out.booleanArgument(static_cast<bool>(value));
    if (value)
        write(out, value);
    m_reply.body = out.release();
}

void Call::modifyInstance() {
    const std::string nameSpace = nameSpaceArgument();
    const CIMInstance modified = binary::ObjectReader(m_in).instance();
    m_reply.title += std::string(" ") + modified.getClassName().c_str();
    ignoreFlags(m_in, 1);
    const std::optional<PropertyList> listed = propertyListArgument(m_in);
    m_manager.modifyInstance(nameSpace, modified, orNull(listed), m_access);
    m_reply.body = done().release();
}

/** Replies by an enumeration of the objects of a source. */
template <class Object>
void Call::replyBy(std::unique_ptr<Source<Object>> objects, UInt8 begin, UInt8 end) {
    Writer out = done();
    out.u8(begin);
    m_reply.body = out.release();
    m_reply.more = std::make_unique<Elements<Object>>(std::move(objects), end);
}

template <class Object>
void Call::replyBy(const std::vector<Object>& objects, UInt8 begin, UInt8 end) {
    Writer out = done();
    out.u8(begin);
    for (const Object& object : objects)
        write(out, object);
    out.u8(end);
    out.u8(end);
    m_reply.body = out.release();
}

void Call::fail(const std::exception& e, binary::Result result) {
    Writer out;
    out.u8(static_cast<UInt8>(result));
    m_reply.error = operationError(e);
    if (result == binary::Result::exception)
        out.u16(static_cast<UInt16>(m_reply.error->code));
    out.string(shortened(e.what(), maximumDescription).c_str());
    m_reply.body = out.release();
    m_reply.more = nullptr;
}

} // namespace

// Clients announce other names for some operations (GetQualifier, ReferenceNames).
OperationReply BinaryHandler::handle(std::string_view request, Access access, const Announcement&) const {
    return Call(request, m_manager, access).reply();
}

} // namespace cimom
