#ifndef OW_CIMCLIENT_HPP_INCLUDED
#define OW_CIMCLIENT_HPP_INCLUDED
#include "OW_CIMFwd.hpp"
#include "OW_ClientAuthCBIFC.hpp"
#include "OW_Exception.hpp"
#include "OW_String.hpp"
#include "OW_WBEMFlags.hpp"
#include <memory>

namespace OpenWBEM {

/**
 * Client of one object manager. Connects on the first request, keeps the connection, and reconnects when the
 * connection is broken. Copies share the connection. One thread at a time may use a client and its copies.
 *
 * Requests throw nothing but OpenWBEM::Exception: CIMException for an error that the object manager reports,
 * SocketException if it cannot be reached, HTTPException for an HTTP error response, IOException for an
 * unreadable reply, XMLParseException for malformed CIM-XML. The client stays usable after an exception.
 */
class OW_CLIENT_API CIMClient {
public:
    /**
     * Resolves the host of a TCP URL but does not connect. Throws MalformedURLException,
     * UnescapeCharForURLException or UnknownHostException for an invalid URL, and SSLException for a TLS URL
     * if the library was built without TLS.
     *
     * @param url address of the object manager, see URL
     * @param ns namespace of the requests; leading slashes are ignored
     * @param authCB called for credentials; may be null
     */
    CIMClient(const String& url, const String& ns, const ClientAuthCBIFCRef& authCB = ClientAuthCBIFCRef());

    void setNameSpace(const String& ns);
    /** The namespace as set. */
    String getNameSpace() const;

    /**
     * Returns all instances of a class. The reply is read and decoded completely first: the call returns the
     * whole enumeration or throws. If the peer has closed the kept connection, the client reconnects and
     * repeats the request once.
     *
     * @param propertyList names of the properties to return; null means all
     */
    CIMInstanceEnumeration
    enumInstancesE(const String& className, WBEMFlags::EDeepFlag deep = WBEMFlags::E_DEEP,
                   WBEMFlags::ELocalOnlyFlag localOnly = WBEMFlags::E_NOT_LOCAL_ONLY,
                   WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_EXCLUDE_QUALIFIERS,
                   WBEMFlags::EIncludeClassOriginFlag includeClassOrigin = WBEMFlags::E_EXCLUDE_CLASS_ORIGIN,
                   const StringArray* propertyList = nullptr);

    /**
     * Returns the instance with the class and keys of a path, in the namespace of the client. Repeats the
     * request as enumInstancesE() does. Returns a null instance if a reply in CIM-XML contains none. A null
     * path throws an exception before anything is sent.
     *
     * @param propertyList names of the properties to return; null means all
     */
    CIMInstance
    getInstance(const CIMObjectPath& instanceName,
                WBEMFlags::ELocalOnlyFlag localOnly = WBEMFlags::E_NOT_LOCAL_ONLY,
                WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_EXCLUDE_QUALIFIERS,
                WBEMFlags::EIncludeClassOriginFlag includeClassOrigin = WBEMFlags::E_EXCLUDE_CLASS_ORIGIN,
                const StringArray* propertyList = nullptr);

    /**
     * Writes an instance. Never repeated: if the connection breaks before the reply, the call throws, and the
     * outcome is unknown.
     *
     * @param propertyList names of the properties to write; null means all of the instance
     */
    void modifyInstance(const CIMInstance& modifiedInstance,
                        WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_INCLUDE_QUALIFIERS,
                        StringArray* propertyList = nullptr);

private:
    class Impl;
    std::shared_ptr<Impl> m_impl;
};

} // namespace OpenWBEM
#endif
