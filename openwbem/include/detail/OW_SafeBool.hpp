#ifndef OW_DETAIL_SAFE_BOOL_HPP_INCLUDED
#define OW_DETAIL_SAFE_BOOL_HPP_INCLUDED

namespace OpenWBEM {
namespace detail {

/**
 * The boolean conversion of handles: a pointer to member, null for a null handle. `if (x)`, `!x` and
 * `x == NULL` compile, arithmetic does not.
 */
struct SafeBoolTarget {
    void yes() const {}
};
typedef void (SafeBoolTarget::*SafeBool)() const;

inline SafeBool safeBool(bool value) {
    return value ? &SafeBoolTarget::yes : nullptr;
}

} // namespace detail
} // namespace OpenWBEM
#endif
