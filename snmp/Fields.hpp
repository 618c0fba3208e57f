#ifndef SNMP_FIELDS_HPP
#define SNMP_FIELDS_HPP

#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>

/** Numbers and texts in the messages between two processes of this program. */
namespace snmp {

inline void appendNumber(std::string& bytes, std::uint32_t number) {
    bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
}

inline void appendText(std::string& bytes, std::string_view text) {
    appendNumber(bytes, static_cast<std::uint32_t>(text.size()));
    bytes += text;
}

/** Reads what the functions above append. Throws std::runtime_error at the end of the bytes. */
class FieldReader {
public:
    explicit FieldReader(std::string_view bytes)
        : m_rest(bytes) {}

    bool isAtEnd() const { return m_rest.empty(); }
    std::uint32_t number() {
        std::uint32_t number = 0;
        std::memcpy(&number, take(sizeof number).data(), sizeof number);
        return number;
    }
    /** A view of the bytes. */
    std::string_view text() { return take(number()); }

private:
    std::string_view take(std::size_t size) {
        if (size > m_rest.size())
            throw std::runtime_error("truncated message");
        const std::string_view taken = m_rest.substr(0, size);
        m_rest.remove_prefix(size);
        return taken;
    }

    std::string_view m_rest;
};

} // namespace snmp
#endif
