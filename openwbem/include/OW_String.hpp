#ifndef OW_STRING_HPP_INCLUDED
#define OW_STRING_HPP_INCLUDED
#include "OW_Array.hpp"
#include "OW_CommonFwd.hpp"
#include "OW_Types.hpp"
#include "detail/OW_Text.hpp"
#include <cstddef>
#include <iosfwd>

namespace OpenWBEM {

/** A text is not a number or boolean of the requested type. */
OW_DECLARE_EXCEPTION(StringConversion)

/**
 * Copy-on-write text, nominally UTF-8, always NUL-terminated. The null string and the empty string differ
 * only in conversions to numbers and in operator[]. May contain NULs; comparisons, like strcmp(), stop at the
 * first. Different threads may use different copies, but only one thread at a time may use one string.
 */
class OW_COMMON_API String {
public:
    static constexpr std::size_t npos = static_cast<std::size_t>(-1);
    enum EIgnoreCaseFlag { E_CASE_SENSITIVE, E_CASE_INSENSITIVE };
    enum ETakeOwnershipFlag { E_TAKE_OWNERSHIP };

    /** The null string. */
    String() noexcept = default;
    /** Copies a NUL-terminated text; a null pointer gives the null string. */
    String(const char* text);
    /** Copies length bytes, embedded NULs included; a null pointer gives the null string. */
    explicit String(const char* text, std::size_t length);
    /** Takes ownership of length bytes created by new char[]. */
    explicit String(ETakeOwnershipFlag, char* newed, std::size_t length);
    explicit String(Int32 value);
    explicit String(UInt32 value);
    explicit String(Int64 value);
    explicit String(UInt64 value);
    explicit String(long value);
    explicit String(unsigned long value);
    /** Six significant digits, in the format "%g". */
    explicit String(Real64 value);
    /** One byte. */
    explicit String(char c);

    /** The NUL-terminated text, never null; valid until the string is changed or destroyed. */
    const char* c_str() const noexcept { return m_text ? m_text->bytes() : ""; }
    /** The number of bytes. */
    std::size_t length() const noexcept { return m_text ? m_text->length : 0; }
    /** The number of characters. */
    std::size_t UTF8Length() const;
    bool empty() const noexcept { return length() == 0; }
    String toString() const { return *this; }
    /** A copy that the caller releases with free(). */
    char* allocateCString() const;
    UInt32 hashCode() const;

    /** Compares the bytes: negative, zero or positive. Pointers must not be null. */
    int compareTo(const String& other) const {
        return m_text.sameAs(other.m_text) ? 0 : compareTo(other.c_str());
    }
    int compareTo(const char* other) const;
    /** Like compareTo(), but compares characters without case (Unicode, simple case folding). */
    int compareToIgnoreCase(const String& other) const {
        return m_text.sameAs(other.m_text) ? 0 : compareToIgnoreCase(other.c_str());
    }
    int compareToIgnoreCase(const char* other) const;
    bool equals(const String& other) const { return compareTo(other) == 0; }
    bool equals(const char* other) const { return compareTo(other) == 0; }
    bool equalsIgnoreCase(const String& other) const { return compareToIgnoreCase(other) == 0; }
    bool equalsIgnoreCase(const char* other) const { return compareToIgnoreCase(other) == 0; }

    /** Whether the text starts or ends with other. Only the empty text starts and ends with the empty text.
     */
    bool startsWith(const String& other, EIgnoreCaseFlag flag = E_CASE_SENSITIVE) const;
    bool startsWith(const char* other, EIgnoreCaseFlag flag = E_CASE_SENSITIVE) const;
    bool startsWith(char c) const { return !empty() && charAt(0) == c; }
    bool endsWith(const String& other, EIgnoreCaseFlag flag = E_CASE_SENSITIVE) const;
    bool endsWith(const char* other, EIgnoreCaseFlag flag = E_CASE_SENSITIVE) const;
    bool endsWith(char c) const { return !empty() && charAt(length() - 1) == c; }
    /** Index of the first occurrence at or after from, or npos. */
    std::size_t indexOf(char c, std::size_t from = 0) const;
    std::size_t indexOf(const char* text, std::size_t from = 0) const;
    std::size_t indexOf(const String& text, std::size_t from = 0) const;
    /** Index of the last occurrence at or before from, or npos. */
    std::size_t lastIndexOf(char c, std::size_t from = npos) const;
    std::size_t lastIndexOf(const char* text, std::size_t from = npos) const;
    std::size_t lastIndexOf(const String& text, std::size_t from = npos) const;
    /** Up to length bytes from begin; the null string if begin is out of range. */
    String substring(std::size_t begin, std::size_t length = npos) const;
    /** The non-empty parts between the delimiters. */
    StringArray tokenize(const char* delimiters = " \n\r\t\v") const;
    /** Whether the text is empty or only white space. */
    bool isSpaces() const;

    /** The byte at an index, which must be in range; '\0' for the null string. */
    char charAt(std::size_t index) const noexcept { return m_text ? m_text->bytes()[index] : '\0'; }
    /**
     * The byte at an index. Out of range, a reference to a '\0' outside the text. Index 0 of the null string
     * throws the exception of a null handle.
     */
    const char& operator[](std::size_t index) const;
    char& operator[](std::size_t index);

    /** Appends; a null pointer appends nothing. */
    String& concat(const String& other);
    String& concat(const char* other);
    String& concat(char c);
    String& operator+=(const String& other) { return concat(other); }
    String& operator+=(const char* other) { return concat(other); }
    String& operator+=(char c) { return concat(c); }
    /** Replaces the text with the output of printf(); returns the number of bytes. */
    int format(const char* form, ...) __attribute__((format(printf, 2, 3)));
    /** Removes white space at the start, the end, both. */
    String& ltrim();
    String& rtrim();
    String& trim();
    /** Converts ASCII letters only. */
    String& toLowerCase();
    String& toUpperCase();
    /** Assigns the null string. */
    String& erase();
    /** Removes up to length bytes from begin. */
    String& erase(std::size_t begin, std::size_t length = npos);
    void swap(String& other) noexcept { m_text.swap(other.m_text); }

    /**
     * Parses the whole text like strtol() and its relatives in the C locale: white space and a sign may
     * precede the number. The empty text is 0. Throws StringConversionException for the null string, for
     * trailing characters, and for a number out of range of the type, including infinities.
     */
    UInt8 toUInt8(int base = 10) const;
    Int8 toInt8(int base = 10) const;
    UInt16 toUInt16(int base = 10) const;
    Int16 toInt16(int base = 10) const;
    UInt32 toUInt32(int base = 10) const;
    Int32 toInt32(int base = 10) const;
    UInt64 toUInt64(int base = 10) const;
    Int64 toInt64(int base = 10) const;
    unsigned int toUnsignedInt(int base = 10) const { return toUInt32(base); }
    int toInt(int base = 10) const { return toInt32(base); }
    Real32 toReal32() const;
    Real64 toReal64() const;
    /** Parses "true" or "false", without case. Throws StringConversionException for any other text. */
    bool toBool() const;
    /** The first character, see Char16. */
    Char16 toChar16() const;

    /** The next line of a stream without its line end; the empty string at the end of the stream. */
    static String getLine(std::istream& in);

private:
    /** Concatenation. */
    friend OW_COMMON_API String operator+(const String& a, const String& b);
    friend OW_COMMON_API String operator+(const String& a, const char* b);
    friend OW_COMMON_API String operator+(const char* a, const String& b);
    friend OW_COMMON_API String operator+(const String& a, char b);
    friend OW_COMMON_API String operator+(char a, const String& b);
    String(const char* a, std::size_t lengthA, const char* b, std::size_t lengthB);
    /** Unshared bytes for writing. Not for the null string. */
    char* edit();

    detail::TextHandle m_text;
};

#define OW_STRING_COMPARISON(OP)                                                                             \
    inline bool operator OP(const String& a, const String& b) {                                              \
        return a.compareTo(b) OP 0;                                                                          \
    }                                                                                                        \
    inline bool operator OP(const String& a, const char* b) {                                                \
        return a.compareTo(b) OP 0;                                                                          \
    }                                                                                                        \
    inline bool operator OP(const char* a, const String& b) {                                                \
        return 0 OP b.compareTo(a);                                                                          \
    }
OW_STRING_COMPARISON(==)
OW_STRING_COMPARISON(!=)
OW_STRING_COMPARISON(<)
OW_STRING_COMPARISON(<=)
OW_STRING_COMPARISON(>)
OW_STRING_COMPARISON(>=)
#undef OW_STRING_COMPARISON

OW_COMMON_API std::ostream& operator<<(std::ostream& out, const String& text);

} // namespace OpenWBEM
#endif
