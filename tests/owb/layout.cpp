/*
 * The layout of the structures that the library shares with separately compiled agents: every field is one
 * word, in this order. The checks count words and hold for any word size.
 */
#include "owb.h"

#include <cstddef>

namespace {

constexpr std::size_t word = sizeof(void*);
static_assert(sizeof(long) == word, "a long is one word");

static_assert(offsetof(_qHead, first) == 0 * word, "_qHead::first");
static_assert(offsetof(_qHead, last) == 1 * word, "_qHead::last");
static_assert(offsetof(_qHead, size) == 2 * word, "_qHead::size");
static_assert(offsetof(_qHead, agent) == 3 * word, "_qHead::agent");
static_assert(offsetof(_qHead, cursor) == 4 * word, "_qHead::cursor");
static_assert(sizeof(_qHead) == 5 * word, "_qHead");

static_assert(offsetof(_qItem, next) == 0 * word, "_qItem::next");
static_assert(offsetof(_qItem, prev) == 1 * word, "_qItem::prev");
static_assert(offsetof(_qItem, row) == 2 * word, "_qItem::row");
static_assert(offsetof(_qItem, array) == 3 * word, "_qItem::array");
static_assert(offsetof(_qItem, group) == 4 * word, "_qItem::group");
static_assert(offsetof(_qItem, nom) == 5 * word, "_qItem::nom");
static_assert(offsetof(_qItem, selected) == 6 * word, "_qItem::selected");
static_assert(offsetof(_qItem, uval) == 7 * word, "_qItem::uval");
static_assert(offsetof(_qItem, lval) == 8 * word, "_qItem::lval");
static_assert(offsetof(_qItem, val) == 9 * word, "_qItem::val");
static_assert(sizeof(_qItem) == 10 * word, "_qItem");

static_assert(offsetof(ExtItem, group) == 0 * word, "ExtItem::group");
static_assert(offsetof(ExtItem, nom) == 1 * word, "ExtItem::nom");
static_assert(offsetof(ExtItem, property) == 2 * word, "ExtItem::property");
static_assert(sizeof(ExtItem) == 3 * word, "ExtItem");

static_assert(offsetof(ExtCimKey, name) == 0 * word, "ExtCimKey::name");
static_assert(offsetof(ExtCimKey, value) == 1 * word, "ExtCimKey::value");
static_assert(sizeof(ExtCimKey) == 2 * word, "ExtCimKey");

/* The sizes on the 32-bit target. */
static_assert(word != 4 || (sizeof(_qHead) == 20 && sizeof(_qItem) == 40 && sizeof(ExtItem) == 12),
              "32-bit layout");

} // namespace
