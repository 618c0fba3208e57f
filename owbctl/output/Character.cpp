#include "output/Character.hpp"

#include <algorithm>
#include <iterator>

namespace owbctl {
namespace {

/** From the first to the last code point. */
struct Range {
    std::uint32_t first;
    std::uint32_t last;
};

// Unicode's Default_Ignorable_Code_Point, controls (C0, DEL, C1), separators of lines and paragraphs, and
// marks of interlinear annotations.
constexpr Range invisible[] = {
    {0x0, 0x1f},      {0x7f, 0x9f},       {0xad, 0xad},       {0x34f, 0x34f},     {0x61c, 0x61c},
    {0x115f, 0x1160}, {0x17b4, 0x17b5},   {0x180b, 0x180f},   {0x200b, 0x200f},   {0x2028, 0x202e},
    {0x2060, 0x206f}, {0x3164, 0x3164},   {0xfe00, 0xfe0f},   {0xfeff, 0xfeff},   {0xffa0, 0xffa0},
    {0xfff0, 0xfffb}, {0x1bca0, 0x1bca3}, {0x1d173, 0x1d17a}, {0xe0000, 0xe0fff},
};

// Blocks whose characters have the property East_Asian_Width W or F.
constexpr Range wide[] = {
    {0x1100, 0x115f},   {0x2e80, 0x303e},   {0x3041, 0xa4cf},   {0xa960, 0xa97f},   {0xac00, 0xd7a3},
    {0xf900, 0xfaff},   {0xfe10, 0xfe19},   {0xfe30, 0xfe6f},   {0xff01, 0xff60},   {0xffe0, 0xffe6},
    {0x16fe0, 0x18cff}, {0x1aff0, 0x1b2ff}, {0x1f300, 0x1f64f}, {0x1f680, 0x1f6ff}, {0x1f900, 0x1f9ff},
    {0x1fa70, 0x1faff}, {0x20000, 0x3fffd},
};

// The blocks of combining marks.
constexpr Range combining[] = {
    {0x300, 0x36f}, {0x1ab0, 0x1aff}, {0x1dc0, 0x1dff}, {0x20d0, 0x20ff}, {0xfe20, 0xfe2f},
};

template <std::size_t count>
bool isIn(const Range (&ranges)[count], std::uint32_t codePoint) {
    const auto next =
        std::upper_bound(std::begin(ranges), std::end(ranges), codePoint,
                         [](std::uint32_t value, const Range& range) { return value < range.first; });
    return next != std::begin(ranges) && codePoint <= std::prev(next)->last;
}

} // namespace

bool isInvisible(std::uint32_t codePoint) {
    return isIn(invisible, codePoint);
}

std::size_t columnsOf(std::uint32_t codePoint) {
    if (codePoint < 0x300)
        return 1;
    if (isIn(combining, codePoint))
        return 0;
    return isIn(wide, codePoint) ? 2 : 1;
}

} // namespace owbctl
