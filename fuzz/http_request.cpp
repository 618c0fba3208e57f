// Consecutive HTTP requests on one connection, read in pieces.
#include "cimom/LampProvider.hpp"
#include "cimom/SessionRun.hpp"
#include "support/Pieces.hpp"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Pieces pieces(data, size);
    cimom::ObjectManager manager = lampManager({"red", "green"});
    const std::string received = SessionRun(manager).answerTo(pieces.of(pieces.content()));
    if (!received.empty() && received.find("HTTP/1.") != 0)
        std::abort();
    return 0;
}
