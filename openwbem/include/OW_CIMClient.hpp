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
 * Client of one object manager. Connects on the first request, keeps the connection and opens a new one when
 * it finds it broken. Copies share the connection. One thread at a time may use a client and its copies.
 *
 * Requests throw CIMException for an error of the object manager, SocketException when it cannot be reached,
 * HTTPException when it refuses the request, IOException when its reply cannot be read, XMLParseException
 * when it is malformed CIM-XML; always an OpenWBEM::Exception. The client stays usable after any of them.
 */
class OW_CLIENT_API CIMClient {
public:
    /**
     * Looks up the host where the URL leads to TCP, but connects nothing yet. Throws MalformedURLException,
     * UnescapeCharForURLException, UnknownHostException for a URL that cannot be used, SSLException for one
     * that asks for TLS where there is none.
     *
     * @param url where the object manager listens, see URL
     * @param ns namespace of the requests; leading slashes do not matter
     * @param authCB asked for credentials; none by default
     */
    CIMClient(const String& url, const String& ns, const ClientAuthCBIFCRef& authCB = ClientAuthCBIFCRef());

    void setNameSpace(const String& ns);
    /** The namespace as it was given. */
    String getNameSpace() const;

    /**
     * All instances of a class, read and decoded to the end before this returns: it delivers the whole
     * enumeration or throws. A connection that the peer has closed since the last request is opened again
     * and the request sent once more.
     *
     * @param propertyList names of the properties wanted, all when null
     */
    CIMInstanceEnumeration
    enumInstancesE(const String& className, WBEMFlags::EDeepFlag deep = WBEMFlags::E_DEEP,
                   WBEMFlags::ELocalOnlyFlag localOnly = WBEMFlags::E_NOT_LOCAL_ONLY,
                   WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_EXCLUDE_QUALIFIERS,
                   WBEMFlags::EIncludeClassOriginFlag includeClassOrigin = WBEMFlags::E_EXCLUDE_CLASS_ORIGIN,
                   const StringArray* propertyList = nullptr);

    /**
     * One instance. The path's class and keys say which; the namespace is that of the client. Sent once more
     * as enumInstancesE() is. A null path throws an exception, nothing is sent. A reply in CIM-XML that has
     * no instance gives a null one.
     *
     * @param propertyList names of the properties wanted, all when null
     */
    CIMInstance
    getInstance(const CIMObjectPath& instanceName,
                WBEMFlags::ELocalOnlyFlag localOnly = WBEMFlags::E_NOT_LOCAL_ONLY,
                WBEMFlags::EIncludeQualifiersFlag includeQualifiers = WBEMFlags::E_EXCLUDE_QUALIFIERS,
                WBEMFlags::EIncludeClassOriginFlag includeClassOrigin = WBEMFlags::E_EXCLUDE_CLASS_ORIGIN,
                const StringArray* propertyList = nullptr);

    /**
     * Writes an instance. Never sent twice: when the connection breaks before the answer, an exception tells
     * so, and whether the object manager has carried it out is not known.
     *
     * @param propertyList names of the properties to be written, all of the instance when null
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
