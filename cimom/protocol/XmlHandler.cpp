#include "protocol/XmlHandler.hpp"

#include "OW_CIMClass.hpp"
#include "OW_CIMException.hpp"
#include "protocol/XmlRequest.hpp"
#include "protocol/XmlText.hpp"
#include "xml/Entities.hpp"
#include "xml/ObjectWriter.hpp"
#include "xml/TextValue.hpp"

#include <algorithm>
#include <memory>
#include <utility>

namespace cimom {

using namespace OpenWBEM;
using xml::KeyType;

namespace {

[[noreturn]] void throwInvalidParameter(const std::string& description) {
    OW_THROWCIMMSG(CIMException::INVALID_PARAMETER, description.c_str());
}

void appendAttribute(std::string& out, const char* name, std::string_view value) {
    out.append(" ").append(name).append("=\"");
    xml::appendEscaped(out, value);
    out += '"';
}

void writeClassName(std::string& out, const String& name) {
    out += "<CLASSNAME";
    appendAttribute(out, "NAME", xml::view(name));
    out += "/>";
}

/** The elements around the outcome of an operation. */
struct Frame {
    explicit Frame(const XmlRequest& request)
        : before(
              R"(<?xml version="1.0" encoding="utf-8" ?><CIM CIMVERSION="2.0" DTDVERSION="2.0"><MESSAGE)") {
        const std::string response = request.isExtrinsic ? "METHODRESPONSE" : "IMETHODRESPONSE";
        appendAttribute(before, "ID", request.messageId);
        before += R"( PROTOCOLVERSION="1.0"><SIMPLERSP><)" + response;
        appendAttribute(before, "NAME", request.operation);
        before += ">";
        after = "</" + response + "></SIMPLERSP></MESSAGE></CIM>\r\n";
    }
    std::string before;
    std::string after;
};

void writeElement(std::string& out, const CIMInstance& instance) {
    xml::writeNamed(out, instance, KeyType::written);
}

void writeElement(std::string& out, const CIMObjectPath& path) {
    xml::writeName(out, path, KeyType::written);
}

/** The elements of an enumeration, and the end of the document. */
template <class Object>
class Elements : public ReplyPieces {
public:
    Elements(std::unique_ptr<Source<Object>> objects, std::string end)
        : m_objects(std::move(objects))
        , m_end(std::move(end)) {}

    bool appendNext(std::string& body) override {
        const Object object = m_objects->next();
        if (!object) {
            body += m_end;
            return false;
        }
        const std::size_t from = body.size();
        writeElement(body, object);
        replaceForbidden(body, from);
        return true;
    }

private:
    std::unique_ptr<Source<Object>> m_objects;
    std::string m_end;
};

/** One request: reads its arguments and carries it out. */
class Call {
public:
    Call(const XmlRequest& request, ObjectManager& manager, Access access)
        : m_request(request)
        , m_manager(manager)
        , m_access(access) {}

    /** Throws what makes the operation fail. */
    OperationReply carryOut();

private:
    struct Operation {
        const char* name;
        OperationReply (Call::*carryOut)() const;
        std::vector<const char*> parameters;
    };
    static const Operation operations[];

    OperationReply enumerateClasses() const;
    OperationReply enumerateClassNames() const;
    OperationReply enumerateInstances() const;
    OperationReply enumerateInstanceNames() const;
    OperationReply getClass() const;
    OperationReply getInstance() const;
    OperationReply getProperty() const;
    OperationReply modifyInstance() const;

    // Arguments. One that is there without a value counts as one that is not there.
    void requireKnown(const std::vector<const char*>& parameters) const;
    bool flag(const char* name, bool byDefault) const;
    std::optional<PropertyList> propertyList() const;
    CIMName optionalClassName() const;
    CIMName className() const;
    CIMObjectPath path() const;
    ClassOrigin classOrigin() const {
        return flag("IncludeClassOrigin", false) ? ClassOrigin::included : ClassOrigin::excluded;
    }
    ClassDetails classDetails() const {
        return {flag("IncludeQualifiers", true), flag("IncludeClassOrigin", false)};
    }

    /** The reply to an operation whose whole result is one text. */
    static OperationReply returned(std::string value);
    /** The reply that returns the objects of a source. */
    template <class Object>
    OperationReply returned(std::unique_ptr<Source<Object>> objects) const;

    const XmlRequest& m_request;
    ObjectManager& m_manager;
    Access m_access;
};

const Call::Operation Call::operations[] = {
    {"EnumerateClasses",
     &Call::enumerateClasses,
     {"ClassName", "DeepInheritance", "LocalOnly", "IncludeQualifiers", "IncludeClassOrigin"}},
    {"EnumerateClassNames", &Call::enumerateClassNames, {"ClassName", "DeepInheritance"}},
    {"EnumerateInstances",
     &Call::enumerateInstances,
     {"ClassName", "LocalOnly", "DeepInheritance", "IncludeQualifiers", "IncludeClassOrigin",
      "PropertyList"}},
    {"EnumerateInstanceNames", &Call::enumerateInstanceNames, {"ClassName"}},
    {"GetClass",
     &Call::getClass,
     {"ClassName", "LocalOnly", "IncludeQualifiers", "IncludeClassOrigin", "PropertyList"}},
    {"GetInstance",
     &Call::getInstance,
     {"InstanceName", "LocalOnly", "IncludeQualifiers", "IncludeClassOrigin", "PropertyList"}},
    {"GetProperty", &Call::getProperty, {"InstanceName", "PropertyName"}},
    {"ModifyInstance", &Call::modifyInstance, {"ModifiedInstance", "IncludeQualifiers", "PropertyList"}},
};

OperationReply Call::carryOut() {
    for (const Operation& operation : operations) {
        if (m_request.isExtrinsic || !xml::equalsIgnoreCase(operation.name, m_request.operation))
            continue;
        requireKnown(operation.parameters);
        for (const char* const name :
             {"LocalOnly", "DeepInheritance", "IncludeQualifiers", "IncludeClassOrigin"})
            flag(name, true); // those that change nothing must be right, too
        return (this->*operation.carryOut)();
    }
    OW_THROWCIMMSG(CIMException::NOT_SUPPORTED, m_request.operation.c_str());
}

void Call::requireKnown(const std::vector<const char*>& parameters) const {
    for (const XmlArgument& argument : m_request.arguments) {
        bool isKnown = false;
        for (const char* const name : parameters)
            isKnown = isKnown || xml::equalsIgnoreCase(name, argument.name);
        if (!isKnown)
            throwInvalidParameter("Parameter " + argument.name + " is not a valid parameter");
    }
}

bool Call::flag(const char* name, bool byDefault) const {
    const XmlArgument* const argument = m_request.find(name);
    if (!argument || !argument->text)
        return byDefault;
    if (!xml::equalsIgnoreCase(*argument->text, "true") && !xml::equalsIgnoreCase(*argument->text, "false"))
        throwInvalidParameter(std::string(name) + " is neither true nor false");
    return xml::equalsIgnoreCase(*argument->text, "true");
}

std::optional<PropertyList> Call::propertyList() const {
    const XmlArgument* const argument = m_request.find("PropertyList");
    return argument ? argument->list : std::nullopt;
}

CIMName Call::optionalClassName() const {
    const XmlArgument* const argument = m_request.find("ClassName");
    return argument && argument->className ? CIMName(argument->className->c_str()) : CIMName();
}

CIMName Call::className() const {
    const XmlArgument* const argument = m_request.find("ClassName");
    if (!argument || !argument->className)
        throwInvalidParameter("Non-optional parameter ClassName was not given");
    return CIMName(argument->className->c_str());
}

CIMObjectPath Call::path() const {
    const XmlArgument* const argument = m_request.find("InstanceName");
    if (!argument || !argument->path)
        throwInvalidParameter("Non-optional parameter InstanceName was not given");
    return argument->path;
}

OperationReply Call::enumerateClasses() const {
    std::string value;
    for (const CIMClass& each :
         m_manager.enumerateClasses(m_request.nameSpace, optionalClassName(), classDetails()))
        xml::write(value, each);
    return returned(std::move(value));
}

OperationReply Call::enumerateClassNames() const {
    std::string value;
    for (const CIMClass& each :
         m_manager.enumerateClasses(m_request.nameSpace, optionalClassName(), ClassDetails()))
        writeClassName(value, each.getName());
    return returned(std::move(value));
}

OperationReply Call::enumerateInstances() const {
    const std::optional<PropertyList> wanted = propertyList();
    return returned(
        m_manager.enumerateInstances(m_request.nameSpace, className(), orNull(wanted), classOrigin()));
}

OperationReply Call::enumerateInstanceNames() const {
    return returned(m_manager.enumerateInstanceNames(m_request.nameSpace, className()));
}

OperationReply Call::getClass() const {
    const std::optional<PropertyList> wanted = propertyList();
    std::string value;
    xml::write(value, m_manager.getClass(m_request.nameSpace, className(), classDetails(), orNull(wanted)));
    return returned(std::move(value));
}

OperationReply Call::getInstance() const {
    const std::optional<PropertyList> wanted = propertyList();
    std::string value;
    xml::write(value, m_manager.getInstance(m_request.nameSpace, path(), orNull(wanted), classOrigin()),
               KeyType::written);
    return returned(std::move(value));
}

OperationReply Call::getProperty() const {
    const XmlArgument* const argument = m_request.find("PropertyName");
    if (!argument || !argument->text)
        throwInvalidParameter("Non-optional parameter PropertyName was not given");
    std::string value;
    xml::write(value, m_manager.getProperty(m_request.nameSpace, path(), CIMName(argument->text->c_str())),
               KeyType::written);
    return returned(std::move(value));
}

OperationReply Call::modifyInstance() const {
    const XmlArgument* const argument = m_request.find("ModifiedInstance");
    if (!argument || !argument->instance)
        throwInvalidParameter("Non-optional parameter ModifiedInstance was not given");
    const CIMObjectPath& path = argument->path;
    if (path && CIMName(path.getClassName()) != CIMName(argument->instance.getClassName()))
        throwInvalidParameter("The object path and the instance are of different classes");
    const std::optional<PropertyList> listed = propertyList();
    m_manager.modifyInstance(m_request.nameSpace, argument->instance, orNull(listed), m_access);
    return OperationReply();
}

OperationReply Call::returned(std::string value) {
    OperationReply reply;
    reply.body = "<IRETURNVALUE>" + std::move(value) + "</IRETURNVALUE>";
    return reply;
}

template <class Object>
OperationReply Call::returned(std::unique_ptr<Source<Object>> objects) const {
    OperationReply reply;
    reply.body = "<IRETURNVALUE>";
    reply.more =
        std::make_unique<Elements<Object>>(std::move(objects), "</IRETURNVALUE>" + Frame(m_request).after);
    return reply;
}

/** Name of the class that a request is about, if it names one. */
std::string classNamed(const XmlRequest& request) {
    for (const XmlArgument& argument : request.arguments) {
        if (argument.className)
            return " " + *argument.className;
        if (argument.path)
            return std::string(" ") + argument.path.getClassName().c_str();
        if (argument.instance)
            return std::string(" ") + argument.instance.getClassName().c_str();
    }
    return std::string();
}

std::string_view withoutSlashesAround(std::string_view path) {
    const std::size_t first = std::min(path.find_first_not_of('/'), path.size());
    return path.substr(first, path.find_last_not_of('/') + 1 - first);
}

/** Throws UnreadableRequest when the head of a request speaks of another operation or namespace (DSP0200). */
void requireAnnounced(const XmlRequest& request, const Announcement& announced) {
    const bool isMethod = !announced.method || xml::equalsIgnoreCase(*announced.method, request.operation);
    const std::string_view object = announced.object ? *announced.object : request.nameSpace;
    const std::string_view nameSpace = object.substr(0, object.find(':'));
    if (!isMethod ||
        !xml::equalsIgnoreCase(withoutSlashesAround(nameSpace), withoutSlashesAround(request.nameSpace)))
        throw UnreadableRequest(400, "Bad request", "header-mismatch");
}

OperationReply failure(const std::exception& e) {
    OperationReply reply;
    reply.error = operationError(e);
    reply.body = "<ERROR";
    appendAttribute(reply.body, "CODE", std::to_string(reply.error->code));
    if (!reply.error->description.empty())
        appendAttribute(reply.body, "DESCRIPTION", reply.error->description);
    reply.body += "></ERROR>";
    return reply;
}

/** Puts the frame around a reply; the rest of a long one brings its own end. */
OperationReply framed(OperationReply reply, const XmlRequest& request) {
    const Frame frame(request);
    reply.title = request.operation + classNamed(request);
    reply.body.insert(0, frame.before);
    replaceForbidden(reply.body, 0);
    if (!reply.more)
        reply.body += frame.after;
    return reply;
}

} // namespace

OperationReply XmlHandler::handle(std::string_view document, Access access,
                                  const Announcement& announced) const {
    XmlRequest request;
    try {
        readXmlRequest(document, request);
        requireAnnounced(request, announced);
        return framed(Call(request, m_manager, access).carryOut(), request);
    } catch (const UnreadableRequest&) {
        throw;
    } catch (const std::exception& e) {
        return framed(failure(e), request);
    }
}

} // namespace cimom
