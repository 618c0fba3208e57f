// The body of a request in the binary protocol. The first byte selects the access rights, the next ones the
// chunks and the sizes of the reads. The client library must be able to decode the reply.
#include "cimom/ClientReading.hpp"
#include "cimom/Completed.hpp"
#include "cimom/LampProvider.hpp"
#include "protocol/BinaryHandler.hpp"
#include "support/ChunkedBody.hpp"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const fuzz::Pieces body(data + 1, size - 1);
    const std::string_view document = body.content();
    cimom::ObjectManager manager = lampManager({"red", "green"});
    const cimom::BinaryHandler handler(manager);
    readAsBinaryClient(
        completed(handler.handle(document, data[0] % 2 == 0 ? cimom::Access::read : cimom::Access::write)));
    if (body.areSeveral() && document.size() <= 1000) // longer ones take up to seconds
        fuzz::expectSameInChunks("application/x-owbinary", body);
    return 0;
}
