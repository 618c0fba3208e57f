#include "binary/Reply.hpp"

#include "OW_CIMException.hpp"
#include "OW_IOException.hpp"
#include "binary/ObjectReader.hpp"
#include "binary/Protocol.hpp"
#include "binary/Reader.hpp"

namespace OpenWBEM {
namespace binary {
namespace {

// Reads the result at the start of the body. Throws the reported error, if any.
void checkResult(Reader& in) {
    switch (static_cast<Result>(in.u8())) {
    case Result::ok:
        return;
    case Result::error:
        OW_THROW(IOException, in.string().c_str());
    case Result::exception: {
        const UInt16 code = in.u16();
        throw CIMException(__FILE__, __LINE__, static_cast<CIMException::ErrNoType>(code),
                           in.string().c_str());
    }
    }
    OW_THROW(IOException, "Unexpected value received from server.");
}

// Any byte other than the start of an instance must be the end mark, twice. So must the byte after a bad
// signature inside an instance.
CIMInstanceEnumeration instances(Reader& in) {
    in.expect(sig::instanceEnumeration);
    CIMInstanceEnumeration all;
    ObjectReader objects(in);
    while (in.peek() == sig::versionedInstance || in.peek() == sig::instance) {
        in.beginObject();
        try {
            all.addElement(objects.instance());
        } catch (const BadCIMSignatureException&) {
            in.expect(sig::endOfInstances);
            throw;
        }
    }
    in.expect(sig::endOfInstances);
    in.expect(sig::endOfInstances);
    return all;
}

// Reads the result, then the return value. Callers get a bad signature as its base class.
template <class Read>
auto readBody(io::Source& body, Read read) {
    Reader in(body);
    try {
        checkResult(in);
        return read(in);
    } catch (const BadCIMSignatureException& e) {
        throw IOException(e);
    }
}

} // namespace

CIMInstanceEnumeration readInstances(io::Source& body) {
    return readBody(body, instances);
}

CIMInstance readInstance(io::Source& body) {
    return readBody(body, [](Reader& in) { return ObjectReader(in).instance(); });
}

void readDone(io::Source& body) {
    readBody(body, [](Reader&) {});
}

} // namespace binary
} // namespace OpenWBEM
