// The body of a reply in CIM-XML, read in pieces.
#include "OW_CIMInstance.hpp"
#include "OW_Exception.hpp"
#include "support/Pieces.hpp"
#include "xml/Reply.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace OpenWBEM;
    fuzz::PieceSource body(fuzz::Pieces(data, size));
    try {
        io::Window window(body);
        xml::Reply reply(window, 1, "EnumerateInstances");
        CIMInstance instance;
        while (reply.next(instance))
            instance.toString();
        reply.finish();
    } catch (const Exception&) {
    }
    return 0;
}
