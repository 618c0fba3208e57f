#include "objects/Access.hpp"

#include <unistd.h>

namespace cimom {

Access accessOf(uid_t user) {
    const uid_t root = 0;
    return user == root || user == ::geteuid() ? Access::write : Access::read;
}

} // namespace cimom
