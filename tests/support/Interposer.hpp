#ifndef TESTS_SUPPORT_INTERPOSER_HPP
#define TESTS_SUPPORT_INTERPOSER_HPP
#include <dlfcn.h>

namespace support::calls {

/** Whether this call is the one to fail; sets errno if so. */
bool fails(const char* name);

template <class Function>
Function* next(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

} // namespace support::calls

/** Defines an interposer: a function with the name of a function of the C library. It fails if this call is
 * the one to fail, and calls the original otherwise. */
#define INTERPOSE(Result, name, parameters, specifier, failure, arguments)                                   \
    extern "C" __attribute__((visibility("default"))) Result name parameters specifier {                     \
        static const auto real = support::calls::next<Result parameters>(#name);                             \
        return support::calls::fails(#name) ? (failure) : real arguments;                                    \
    }

#endif
