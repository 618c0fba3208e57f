#include "CaseFolding.hpp"

#include "Utf8.hpp"

#include <boost/spirit/home/support/char_encoding/unicode/query.hpp>

namespace OpenWBEM {
namespace {

bool isAscii(char c) {
    return static_cast<signed char>(c) >= 0;
}

int foldAscii(char c) {
    return c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c;
}

// The lower case of the upper case is the same for all cases of a letter, as of sigma, which has two lower
// ones. The dotted capital and the dotless small i, which only Turkish takes for cases of i, stay.
int fold(char32_t code) {
    using namespace boost::spirit::ucd;
    if (code == 0x130 || code == 0x131)
        return static_cast<int>(code);
    return static_cast<int>(to_lowercase(to_uppercase(code)));
}

} // namespace

int compareFolded(const char* a, const char* b) {
    int left = 0;
    int right = 0;
    do {
        if (isAscii(*a) && isAscii(*b)) {
            left = foldAscii(*a++);
            right = foldAscii(*b++);
        } else {
            left = fold(takeUtf8(a));
            right = fold(takeUtf8(b));
        }
    } while (left == right && left != 0);
    return left - right;
}

} // namespace OpenWBEM
