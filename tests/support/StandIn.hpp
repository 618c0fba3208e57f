#ifndef TESTS_SUPPORT_STAND_IN_HPP
#define TESTS_SUPPORT_STAND_IN_HPP
#include <dlfcn.h>

namespace support::calls {

/** Whether this call of the system is the one to fail; errno tells why then. */
bool fails(const char* name);

template <class Function>
Function* next(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

} // namespace support::calls

/** Defines a function that stands in front of the C library's of the same name and returns a failure in its
 * turn. */
#define STAND_IN(Result, name, parameters, specifier, failure, arguments)                                    \
    extern "C" __attribute__((visibility("default"))) Result name parameters specifier {                     \
        static const auto real = support::calls::next<Result parameters>(#name);                             \
        return support::calls::fails(#name) ? (failure) : real arguments;                                    \
    }

#endif
