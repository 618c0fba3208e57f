#ifndef INVENTORY_STAT_LINE_HPP
#define INVENTORY_STAT_LINE_HPP
#include <cstddef>

namespace inventory {

/* What is taken of the line of a stat file, proc(5). */
struct StatLine {
    const char* name; /* within the line */
    std::size_t nameSize;
    char state;
    unsigned long long parent;
    unsigned long long userTime;   /* clock ticks */
    unsigned long long systemTime; /* clock ticks */
};

/*
 * Reads a line. The name ends at the first ")", also at one of its own; the fields behind it are then looked
 * for where they are not. False when a field is missing or is no number.
 */
bool parse(const char* line, std::size_t size, StatLine& result);

} // namespace inventory

#endif
