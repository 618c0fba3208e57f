#ifndef OPENWBEM_CLIENT_AUTHENTICATION_HPP_INCLUDED
#define OPENWBEM_CLIENT_AUTHENTICATION_HPP_INCLUDED
#include "OW_ClientAuthCBIFC.hpp"
#include "OW_URL.hpp"

#include <string>
#include <vector>

namespace OpenWBEM {

/**
 * Authenticates the client to an object manager: values of the header Authorization, in two schemes.
 *
 * - OWLocal, to an object manager on this host: the client names its effective user, and proves it with a
 * secret from a file that only this user can read.
 * - Basic (RFC 7617): name and password from the URL or the callback.
 *
 * Digest is not supported: deployed object managers compute it in a non-standard way.
 */
class Authentication {
public:
    Authentication(const URL& url, const ClientAuthCBIFCRef& callback);

    /** For the first attempt of a request. Names the user if the host is local and the URL has no
     * credentials, else "". */
    std::string introduction() const;
    /**
     * For the second attempt, after status 401: answers the first supported challenge of the headers
     * WWW-Authenticate. Throws HTTPException if none is supported, if there are no credentials, or if the
     * cookie file is rejected.
     */
    std::string answer(const std::vector<std::string>& challenges) const;

private:
    std::string basic(const std::string& challenge) const;

    const URL m_url;
    const ClientAuthCBIFCRef m_callback;
    const bool m_isLocal;
};

} // namespace OpenWBEM
#endif
