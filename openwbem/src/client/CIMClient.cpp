#include "OW_CIMClient.hpp"

#include "OW_CIMInstance.hpp"
#include "OW_CIMInstanceEnumeration.hpp"
#include "OW_IOException.hpp"
#include "client/Operations.hpp"

#include <new>
#include <stdexcept>

namespace OpenWBEM {
namespace {

// Runs an operation. Converts out of memory to an exception of this library: callers catch no others.
template <class Operation>
auto run(Operation operation) {
    try {
        return operation();
    } catch (const std::bad_alloc&) {
        OW_THROW(IOException, "Out of memory");
    } catch (const std::length_error&) {
        OW_THROW(IOException, "Out of memory");
    }
}

} // namespace

class CIMClient::Impl {
public:
    Impl(const URL& url, const String& ns, const ClientAuthCBIFCRef& authCB)
        : nameSpace(ns)
        , operations(speaksBinary(url) ? binaryOperations(url, authCB) : xmlOperations(url, authCB)) {}

    String nameSpace;
    const std::unique_ptr<Operations> operations;
};

CIMClient::CIMClient(const String& url, const String& ns, const ClientAuthCBIFCRef& authCB)
    : m_impl(std::make_shared<Impl>(URL(url), ns, authCB)) {}

void CIMClient::setNameSpace(const String& ns) {
    m_impl->nameSpace = ns;
}

String CIMClient::getNameSpace() const {
    return m_impl->nameSpace;
}

CIMInstanceEnumeration CIMClient::enumInstancesE(const String& className, WBEMFlags::EDeepFlag deep,
                                                 WBEMFlags::ELocalOnlyFlag localOnly,
                                                 WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                                 WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                                                 const StringArray* propertyList) {
    return run([&] {
        return m_impl->operations->enumerateInstances(
            m_impl->nameSpace, className, deep,
            {localOnly, includeQualifiers, includeClassOrigin, propertyList});
    });
}

CIMInstance CIMClient::getInstance(const CIMObjectPath& instanceName, WBEMFlags::ELocalOnlyFlag localOnly,
                                   WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                                   WBEMFlags::EIncludeClassOriginFlag includeClassOrigin,
                                   const StringArray* propertyList) {
    return run([&] {
        return m_impl->operations->getInstance(
            m_impl->nameSpace, instanceName,
            {localOnly, includeQualifiers, includeClassOrigin, propertyList});
    });
}

void CIMClient::modifyInstance(const CIMInstance& modifiedInstance,
                               WBEMFlags::EIncludeQualifiersFlag includeQualifiers,
                               StringArray* propertyList) {
    run([&] {
        m_impl->operations->modifyInstance(m_impl->nameSpace, modifiedInstance, includeQualifiers,
                                           propertyList);
    });
}

} // namespace OpenWBEM
