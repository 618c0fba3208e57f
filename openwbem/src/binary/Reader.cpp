#include "binary/Reader.hpp"

#include "OW_IOException.hpp"

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

void throwTruncated() {
    OW_THROW(IOException, "Failed reading data");
}

const char* Reader::take(std::size_t size) {
    if (size > remaining())
        throwTruncated();
    const char* const bytes = m_next;
    m_next += size;
    return bytes;
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

UInt32 Reader::count(std::size_t elementSize) {
    const UInt32 elements = number();
    if (elements > remaining() / elementSize)
        throwTruncated();
    return elements;
}

std::string_view Reader::text() {
    const std::size_t size = number();
    return std::string_view(take(size), size);
}

String Reader::string() {
    const std::string_view bytes = text();
    return bytes.empty() ? String() : String(bytes.data(), bytes.size());
}

UInt8 Reader::peek() const {
    if (remaining() == 0)
        throwTruncated();
    return static_cast<UInt8>(*m_next);
}

void Reader::expect(UInt8 signature) {
    const UInt8 got = u8();
    if (got == signature)
        return;
    const std::string message =
        "Received invalid signature. Got: " + std::to_string(got) + " Expected: " + std::to_string(signature);
    OW_THROW(IOException, message.c_str());
}

} // namespace binary
} // namespace OpenWBEM
