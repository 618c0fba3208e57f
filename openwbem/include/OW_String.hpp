#ifndef OW_STRING_HPP_INCLUDED
#define OW_STRING_HPP_INCLUDED
#include "OW_Array.hpp"
#include "OW_CommonFwd.hpp"
#include "OW_Types.hpp"
#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string>

namespace OpenWBEM {

/** A text does not read as the number or truth value that it should be. */
OW_DECLARE_EXCEPTION(StringConversion)

/**
 * Immutable text, nominally UTF-8, whose copies share their bytes. A null string and an empty one behave
 * alike. Comparisons are those of strcmp(): they stop at an embedded NUL.
 */
class OW_COMMON_API String {
public:
    static const std::size_t npos = static_cast<std::size_t>(-1);

    String() = default;
    /** Copies a NUL-terminated text; a null pointer gives the null string. */
    String(const char* text);
    /** Copies length bytes, embedded NULs included; a null pointer gives the null string. */
    explicit String(const char* text, std::size_t length);

    /** NUL-terminated text, never null, valid as long as the string. */
    const char* c_str() const { return m_text ? m_text->c_str() : ""; }
    /** Bytes, not characters. */
    std::size_t length() const { return m_text ? m_text->size() : 0; }
    bool empty() const { return length() == 0; }
    String toString() const { return *this; }

    /** Negative, zero or positive, in the order of the bytes. */
    int compareTo(const String& other) const;
    int compareTo(const char* other) const;
    /** As compareTo(), ASCII letters compared without regard to case. */
    int compareToIgnoreCase(const String& other) const;
    bool equals(const String& other) const { return compareTo(other) == 0; }
    bool equalsIgnoreCase(const String& other) const { return compareToIgnoreCase(other) == 0; }

    String& operator+=(const String& other);
    bool startsWith(const String& other) const;
    bool endsWith(const String& other) const;
    /** Position of the first occurrence at or after from, or npos. */
    std::size_t indexOf(char c, std::size_t from = 0) const;
    std::size_t indexOf(const char* text, std::size_t from = 0) const;
    /** Up to length bytes from begin on; the null string when begin is not inside. */
    String substring(std::size_t begin, std::size_t length = npos) const;

private:
    explicit String(std::string text);

    std::shared_ptr<const std::string> m_text;
};

inline bool operator==(const String& a, const String& b) {
    return a.compareTo(b) == 0;
}
inline bool operator!=(const String& a, const String& b) {
    return a.compareTo(b) != 0;
}
inline bool operator<(const String& a, const String& b) {
    return a.compareTo(b) < 0;
}
inline bool operator==(const String& a, const char* b) {
    return a.compareTo(b) == 0;
}
inline bool operator!=(const String& a, const char* b) {
    return a.compareTo(b) != 0;
}
OW_COMMON_API String operator+(const String& a, const String& b);
OW_COMMON_API std::ostream& operator<<(std::ostream& out, const String& text);

} // namespace OpenWBEM
#endif
