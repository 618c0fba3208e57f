#ifndef CIMOM_OBJECTS_ACCESS_HPP_INCLUDED
#define CIMOM_OBJECTS_ACCESS_HPP_INCLUDED
#include <sys/types.h>

namespace cimom {

/** What a client may do. */
enum class Access { read, write };

/** What a local user may do: root and the user whom this process runs as may write. */
Access accessOf(uid_t user);

} // namespace cimom
#endif
