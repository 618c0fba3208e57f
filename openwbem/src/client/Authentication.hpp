#ifndef OPENWBEM_CLIENT_AUTHENTICATION_HPP_INCLUDED
#define OPENWBEM_CLIENT_AUTHENTICATION_HPP_INCLUDED
#include "OW_ClientAuthCBIFC.hpp"
#include "OW_URL.hpp"

#include <string>
#include <vector>

namespace OpenWBEM {

/**
 * Tells an object manager who is asking. Values of the header Authorization, for two schemes:
 *
 * - OWLocal, with an object manager on this host: the client names its effective user, and proves to be that
 *   user by a secret from a file that only the user can read.
 * - Basic (RFC 7617): name and password, of the URL or of the callback.
 *
 * Digest is not known: the object managers in use compute it in a way of their own.
 */
class Authentication {
public:
    Authentication(const URL& url, const ClientAuthCBIFCRef& callback);

    /** For a request that was not refused yet: the user, to this host and without credentials; else "". */
    std::string introduction() const;
    /**
     * For a request that was refused, once: the answer to the first challenge that is known, of those in the
     * headers WWW-Authenticate. Throws HTTPException when there is none.
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
