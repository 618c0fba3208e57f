#include "doctor/TlsLibrary.hpp"

#include <dlfcn.h>
#include <filesystem>
#include <link.h>
#include <stdexcept>

namespace owbctl {
namespace {

/** The directory of the client library that this program has loaded; empty if that is not ours. */
std::string directoryOfLibrary() {
    void* const library = ::dlopen(OWBCTL_CLIENT_LIBRARY, RTLD_LAZY | RTLD_NOLOAD);
    const link_map* loaded = nullptr;
    if (library == nullptr || ::dlinfo(library, RTLD_DI_LINKMAP, &loaded) != 0)
        return {};
    return std::filesystem::canonical(loaded->l_name).parent_path().string();
}

decltype(&owtls_engine) load(const std::string& directory) {
    const std::string path = directory + "/" OWBCTL_TLS_MODULE;
    void* const module = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    void* const function = module == nullptr ? nullptr : ::dlsym(module, "owtls_engine");
    if (function == nullptr)
        throw std::runtime_error(std::string("cannot load TLS: ") + ::dlerror());
    return reinterpret_cast<decltype(&owtls_engine)>(function);
}

} // namespace

std::unique_ptr<owtls::TlsEngine> tlsEngine(const std::string& host, bool isAddress) {
    const std::string directory = directoryOfLibrary();
    if (directory.empty())
        return nullptr;
    std::string failure;
    std::unique_ptr<owtls::TlsEngine> engine(load(directory)(host, isAddress, owtls::tlsSettings(), failure));
    if (!engine)
        throw std::runtime_error(failure);
    return engine;
}

} // namespace owbctl
