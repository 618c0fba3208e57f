#include "client/TlsModule.hpp"

#include "OW_SSLException.hpp"

#include <atomic>
#include <climits>
#include <cstdlib>
#include <dlfcn.h>

namespace OpenWBEM {
namespace {

using Function = decltype(&owtls_engine);

/** The path of this library, absolute; empty if it is unknown. */
struct OwnPath {
    OwnPath() noexcept {
        Dl_info self{};
        if (::dladdr(this, &self) == 0 || ::realpath(self.dli_fname, text) == nullptr)
            *text = '\0';
    }
    char text[PATH_MAX];
};

// Found when this library is loaded: it may be loaded by a path that is relative to the current directory.
const OwnPath ownPath;

Function load() {
    const std::string own = ownPath.text;
    const std::string path = own.substr(0, own.rfind('/')) + "/" OWB_TLS_MODULE;
    // OpenSSL does not survive being unloaded.
    void* const module = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    void* const function = module ? ::dlsym(module, "owtls_engine") : nullptr;
    if (!function)
        OW_THROW(SSLException, (std::string("cannot load TLS: ") + ::dlerror()).c_str());
    return reinterpret_cast<Function>(function);
}

} // namespace

// Without a lock, which another thread could hold when the process forks. Loading twice is harmless.
Function tlsModule() {
    static std::atomic<Function> loaded{nullptr};
    if (!loaded)
        loaded = load();
    return loaded;
}

} // namespace OpenWBEM
