#ifndef CIMOM_OBJECTS_ACCESS_HPP_INCLUDED
#define CIMOM_OBJECTS_ACCESS_HPP_INCLUDED
#include <sys/types.h>
#include <unistd.h>

namespace cimom {

/** What a client may do. */
enum class Access { read, write };

/** What a local user may do: root and the user of this process may write, others may read. */
inline Access accessOf(uid_t user) {
    const uid_t root = 0;
    return user == root || user == ::geteuid() ? Access::write : Access::read;
}

} // namespace cimom
#endif
