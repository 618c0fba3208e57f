#ifndef CIMOM_ACCESS_HPP_INCLUDED
#define CIMOM_ACCESS_HPP_INCLUDED
#include <sys/types.h>

namespace cimom {

/** What a client may do. */
enum class Access { read, write };

/** What a local user may do: root and the user whom this process runs as may write. */
Access accessOf(uid_t user);

/**
 * What the peer of a Unix-domain socket may do. Its user is the one that it connected as (SO_PEERCRED,
 * unix(7)); a peer whose user the kernel does not tell may read.
 */
Access accessOfPeer(int socket);

} // namespace cimom
#endif
