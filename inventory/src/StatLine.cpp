#include "StatLine.hpp"

#include "Scanner.hpp"

#include <algorithm>

namespace inventory {
namespace {

/* Names of kernel threads, the longest that there are, have up to 63 bytes. */
const std::size_t longestName = 63;

bool skipWords(Scanner& in, int count) {
    while (count > 0 && in.skipWord())
        --count;
    return count == 0;
}

} // namespace

bool parse(const char* line, std::size_t size, StatLine& result) {
    const int wordsBetweenParentAndTimes = 9;
    Scanner in(line, size);
    if (!in.skipNumber())
        return false;
    in.skipSpace();
    if (!in.skip('(') || !in.textUpTo(')', result.name, result.nameSize) || !in.skip(')'))
        return false;
    result.nameSize = std::min(result.nameSize, longestName);
    in.skipSpace();
    return in.character(result.state) && in.number(result.parent) &&
           skipWords(in, wordsBetweenParentAndTimes) && in.number(result.userTime) &&
           in.number(result.systemTime);
}

} // namespace inventory
