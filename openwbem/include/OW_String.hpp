#ifndef OW_STRING_HPP_INCLUDED
#define OW_STRING_HPP_INCLUDED
#include "OW_Array.hpp"
#include "OW_CommonFwd.hpp"
#include "OW_Types.hpp"
#include "detail/OW_Text.hpp"
#include <cstddef>
#include <iosfwd>

namespace OpenWBEM {

/** A text does not read as the number or truth value that it should be. */
OW_DECLARE_EXCEPTION(StringConversion)

/**
 * Text, nominally UTF-8, whose copies share their bytes until one is changed; always NUL-terminated. A null
 * string and an empty one behave alike but for numbers and operator[]. NULs may stand inside; comparisons
 * are those of strcmp() and stop there. Copies may be used in different threads, one string only in one
 * thread at a time.
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
    /** Takes over length bytes that new char[] gave. */
    explicit String(ETakeOwnershipFlag, char* newed, std::size_t length);
    explicit String(Int32 value);
    explicit String(UInt32 value);
    explicit String(Int64 value);
    explicit String(UInt64 value);
    explicit String(long value);
    explicit String(unsigned long value);
    /** Six significant digits, in the form of "%g". */
    explicit String(Real64 value);
    /** One byte. */
    explicit String(char c);

    /** NUL-terminated text, never null, valid until the string changes or ends. */
    const char* c_str() const noexcept { return m_text ? m_text->bytes() : ""; }
    /** Bytes, not characters. */
    std::size_t length() const noexcept { return m_text ? m_text->length : 0; }
    /** Characters. */
    std::size_t UTF8Length() const;
    bool empty() const noexcept { return length() == 0; }
    String toString() const { return *this; }
    /** A copy for the caller to free(). */
    char* allocateCString() const;
    UInt32 hashCode() const;

    /** Negative, zero or positive, in the order of the bytes. Null pointers are not allowed. */
    int compareTo(const String& other) const {
        return m_text.sameAs(other.m_text) ? 0 : compareTo(other.c_str());
    }
    int compareTo(const char* other) const;
    /** As compareTo(), in the order of the characters, whatever their case (Unicode, simple case folding). */
    int compareToIgnoreCase(const String& other) const {
        return m_text.sameAs(other.m_text) ? 0 : compareToIgnoreCase(other.c_str());
    }
    int compareToIgnoreCase(const char* other) const;
    bool equals(const String& other) const { return compareTo(other) == 0; }
    bool equals(const char* other) const { return compareTo(other) == 0; }
    bool equalsIgnoreCase(const String& other) const { return compareToIgnoreCase(other) == 0; }
    bool equalsIgnoreCase(const char* other) const { return compareToIgnoreCase(other) == 0; }

    /** Whether the text begins or ends with other; with the empty text only the empty one does. */
    bool startsWith(const String& other, EIgnoreCaseFlag flag = E_CASE_SENSITIVE) const;
    bool startsWith(const char* other, EIgnoreCaseFlag flag = E_CASE_SENSITIVE) const;
    bool startsWith(char c) const { return !empty() && charAt(0) == c; }
    bool endsWith(const String& other, EIgnoreCaseFlag flag = E_CASE_SENSITIVE) const;
    bool endsWith(const char* other, EIgnoreCaseFlag flag = E_CASE_SENSITIVE) const;
    bool endsWith(char c) const { return !empty() && charAt(length() - 1) == c; }
    /** Position of the first occurrence at or after from, or npos. */
    std::size_t indexOf(char c, std::size_t from = 0) const;
    std::size_t indexOf(const char* text, std::size_t from = 0) const;
    std::size_t indexOf(const String& text, std::size_t from = 0) const;
    /** Position of the last occurrence at or before from, or npos. */
    std::size_t lastIndexOf(char c, std::size_t from = npos) const;
    std::size_t lastIndexOf(const char* text, std::size_t from = npos) const;
    std::size_t lastIndexOf(const String& text, std::size_t from = npos) const;
    /** Up to length bytes from begin on; the null string when begin is not inside. */
    String substring(std::size_t begin, std::size_t length = npos) const;
    /** The parts between the delimiters, without empty ones. */
    StringArray tokenize(const char* delimiters = " \n\r\t\v") const;
    /** Whether there is nothing but white space, or nothing at all. */
    bool isSpaces() const;

    /** The byte at an index, which must be inside; '\0' for the null string. */
    char charAt(std::size_t index) const noexcept { return m_text ? m_text->bytes()[index] : '\0'; }
    /**
     * The byte at an index; '\0', whose change changes nothing, for one that is not inside. Index 0 of the
     * null string throws the exception of a null handle.
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
    /** Prints into the string as printf() does; returns the number of bytes. */
    int format(const char* form, ...) __attribute__((format(printf, 2, 3)));
    /** Removes white space at the left, the right, both ends. */
    String& ltrim();
    String& rtrim();
    String& trim();
    /** Changes ASCII letters; other characters stay. */
    String& toLowerCase();
    String& toUpperCase();
    /** Makes it the null string. */
    String& erase();
    /** Removes up to length bytes from begin on. */
    String& erase(std::size_t begin, std::size_t length = npos);
    void swap(String& other) noexcept { m_text.swap(other.m_text); }

    /**
     * The number that the whole text is, as strtol() and its relatives read it, whatever the locale: blanks
     * and a sign may stand in front. The empty text is 0. StringConversionException for the null string, for
     * any other rest, and for a number out of the type's range; infinities count as such.
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
    /** "true" or "false", whatever the case of the letters; else StringConversionException. */
    bool toBool() const;
    /** The first character, see Char16. */
    Char16 toChar16() const;

    /** The next line of a stream without its end; the empty string when there is none. */
    static String getLine(std::istream& in);

private:
    /** Two texts as one. */
    friend OW_COMMON_API String operator+(const String& a, const String& b);
    friend OW_COMMON_API String operator+(const String& a, const char* b);
    friend OW_COMMON_API String operator+(const char* a, const String& b);
    friend OW_COMMON_API String operator+(const String& a, char b);
    friend OW_COMMON_API String operator+(char a, const String& b);
    String(const char* a, std::size_t lengthA, const char* b, std::size_t lengthB);
    /** The bytes for changing: this string's own. Not for the null string. */
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
