#include "binary/Reader.hpp"

#include "OW_IOException.hpp"
#include "io/Limits.hpp"

#include <cstring>
#include <string>

namespace OpenWBEM {
namespace binary {
namespace {

template <class T>
T bigEndian(const char* bytes) {
    T value = 0;
    for (std::size_t i = 0; i < sizeof(T); ++i)
        value = static_cast<T>(value << 8 | static_cast<unsigned char>(bytes[i]));
    return value;
}

} // namespace

void Reader::throwTruncated() {
    OW_THROW(IOException, "Failed reading data");
}

UInt16 Reader::u16() {
    return bigEndian<UInt16>(take(2));
}

UInt32 Reader::u32() {
    return bigEndian<UInt32>(take(4));
}

UInt64 Reader::u64() {
    return bigEndian<UInt64>(take(8));
}

UInt32 Reader::number() {
    const UInt8 first = u8();
    if (first < 0x80)
        return first;
    const unsigned size = first & 0x7FU;
    if (size > 4)
        OW_THROW(IOException, "Failed reading data: length length is too large");
    UInt32 value = 0;
    for (unsigned i = 0; i < size; ++i)
        value = value << 8 | u8();
    return value;
}

std::string_view Reader::text() {
    const std::size_t size = number();
    if (size <= io::maximumText)
        return std::string_view(take(size), size);
    take(io::maximumText); // if the bytes are missing, reports truncation, not size
    OW_THROW(IOException, "Failed reading data: a text is too long");
}

String Reader::string() {
    const std::string_view bytes = text();
    return String(bytes.data(), bytes.size()); // never null: the null string does not convert to numbers
}

UInt8 Reader::peek() {
    if (atEnd())
        throwTruncated();
    return static_cast<UInt8>(*m_in.begin());
}

void Reader::expect(UInt8 signature) {
    const UInt8 got = u8();
    if (got == signature)
        return;
    const std::string message =
        "Received invalid signature. Got: " + std::to_string(got) + " Expected: " + std::to_string(signature);
    OW_THROW_ERR(BadCIMSignatureException, message.c_str(), 0);
}

bool Reader::skip(std::string_view bytes) {
    if (!m_in.need(bytes.size()) || std::memcmp(m_in.begin(), bytes.data(), bytes.size()) != 0)
        return false;
    m_in.consume(bytes.size());
    return true;
}

} // namespace binary
} // namespace OpenWBEM
