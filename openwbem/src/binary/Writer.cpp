#include "binary/Writer.hpp"

#include "OW_Array.hpp"
#include "OW_String.hpp"
#include "binary/Protocol.hpp"

namespace OpenWBEM {
namespace binary {

void Writer::u16(UInt16 value) {
    u8(static_cast<UInt8>(value >> 8));
    u8(static_cast<UInt8>(value));
}

void Writer::u32(UInt32 value) {
    u16(static_cast<UInt16>(value >> 16));
    u16(static_cast<UInt16>(value));
}

void Writer::u64(UInt64 value) {
    u32(static_cast<UInt32>(value >> 32));
    u32(static_cast<UInt32>(value));
}

void Writer::number(UInt32 value) {
    if (value < 0x80) {
        u8(static_cast<UInt8>(value));
        return;
    }
    unsigned size = 1;
    while (size < 4 && value >> (8 * size))
        ++size;
    u8(static_cast<UInt8>(0x80 | size));
    while (size-- > 0)
        u8(static_cast<UInt8>(value >> (8 * size)));
}

void Writer::text(std::string_view value) {
    number(static_cast<UInt32>(value.size()));
    m_bytes.append(value);
}

void Writer::string(const String& value) {
    text(std::string_view(value.c_str(), value.length()));
}

void Writer::booleanArgument(bool value) {
    u8(sig::boolean);
    boolean(value);
}

void Writer::stringArgument(const String& value) {
    u8(sig::string);
    string(value);
}

void Writer::stringListArgument(const StringArray* values) {
    booleanArgument(values == nullptr);
    if (!values)
        return;
    u8(sig::stringArray);
    number(static_cast<UInt32>(values->size()));
    for (const String& value : *values)
        string(value);
}

} // namespace binary
} // namespace OpenWBEM
