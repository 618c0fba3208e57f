#ifndef OW_CLIENT_AUTH_CBIFC_HPP_INCLUDED
#define OW_CLIENT_AUTH_CBIFC_HPP_INCLUDED
#include "OW_CommonFwd.hpp"
#include "OW_IfcsFwd.hpp"
#include "OW_IntrusiveCountableBase.hpp"

namespace OpenWBEM {

/** Asks the application for credentials when the object manager wants them and the URL has none. */
class OW_CLIENT_API ClientAuthCBIFC : public IntrusiveCountableBase {
public:
    ~ClientAuthCBIFC() override;

    /**
     * @param realm what the credentials are for, as the object manager names it
     * @param name, passwd filled in by the callback
     * @param details further text of the object manager, may be empty
     * @return false when there are no credentials
     */
    virtual bool getCredentials(const String& realm, String& name, String& passwd, const String& details) = 0;
};

} // namespace OpenWBEM
#endif
