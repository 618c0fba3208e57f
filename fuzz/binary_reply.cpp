// The body of a reply in the binary protocol. The first byte selects the operation, the next ones the sizes
// of the reads.
#include "OW_CIMInstance.hpp"
#include "OW_Exception.hpp"
#include "binary/Reply.hpp"
#include "support/Pieces.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    fuzz::PieceSource body(fuzz::Pieces(data + 1, size - 1));
    try {
        if (data[0] % 2 == 0) {
            OpenWBEM::CIMInstanceEnumeration instances = OpenWBEM::binary::readInstances(body);
            while (instances.hasMoreElements())
                instances.nextElement().toString();
        } else {
            OpenWBEM::binary::readInstance(body).toString();
        }
    } catch (const OpenWBEM::Exception&) {
    }
    return 0;
}
