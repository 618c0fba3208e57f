#ifndef OW_DETAIL_SAFE_BOOL_HPP_INCLUDED
#define OW_DETAIL_SAFE_BOOL_HPP_INCLUDED

namespace OpenWBEM {
namespace detail {

/**
 * Result of the conversion that makes `if (x)`, `!x` and `x == NULL` compile on a handle, and arithmetic not:
 * a pointer to member, null for a null handle.
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
