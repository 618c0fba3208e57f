// What a client sends over a connection: requests of HTTP, one after the other.
#include "cimom/LampProvider.hpp"
#include "cimom/SessionRun.hpp"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    cimom::ObjectManager manager = lampManager({"red", "green"});
    const std::string received = SessionRun(manager).answerTo({reinterpret_cast<const char*>(data), size});
    if (!received.empty() && received.find("HTTP/1.") != 0)
        std::abort();
    return 0;
}
