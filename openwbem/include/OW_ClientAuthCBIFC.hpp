#ifndef OW_CLIENT_AUTH_CBIFC_HPP_INCLUDED
#define OW_CLIENT_AUTH_CBIFC_HPP_INCLUDED
#include "OW_CommonFwd.hpp"
#include "OW_IfcsFwd.hpp"
#include "OW_IntrusiveCountableBase.hpp"

namespace OpenWBEM {

/** Callback for credentials: called when the object manager demands them and the URL has none. */
class OW_CLIENT_API ClientAuthCBIFC : public IntrusiveCountableBase {
public:
    ~ClientAuthCBIFC() override;

    /**
     * @param realm realm that the object manager names, or the URL if it names none
     * @param name, passwd output
     * @param details further text of the object manager; may be empty
     * @return whether there are credentials
     */
    virtual bool getCredentials(const String& realm, String& name, String& passwd, const String& details) = 0;
};

} // namespace OpenWBEM
#endif
