// The body of a request in CIM-XML. The first byte chooses what the client may do. The client library must
// understand the reply.
#include "cimom/ClientReading.hpp"
#include "cimom/Completed.hpp"
#include "cimom/LampProvider.hpp"
#include "protocol/XmlHandler.hpp"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const std::string_view document(reinterpret_cast<const char*>(data + 1), size - 1);
    cimom::ObjectManager manager = lampManager({"red", "green"});
    const cimom::XmlHandler handler(manager);
    try {
        readAsXmlClient(completed(handler.handle(document, data[0] % 2 == 0 ? cimom::Access::read
                                                                            : cimom::Access::write)),
                        document);
    } catch (const cimom::UnreadableRequest&) {
    }
    return 0;
}
