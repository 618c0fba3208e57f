#ifndef OW_DETAIL_SHARED_HPP_INCLUDED
#define OW_DETAIL_SHARED_HPP_INCLUDED
#include "../OW_config.h"
#include <memory>
#include <utility>

namespace OpenWBEM {
namespace detail {

/** Throws the exception of a call on a null handle. */
[[noreturn]] OW_COMMON_API void throwNullReference();

/**
 * Copy-on-write handle to data that copies share; may be null. Reading or changing a null handle throws an
 * OpenWBEM::Exception. Handles that share data belong to one thread at a time.
 */
template <class T>
class Shared {
public:
    Shared() = default;
    explicit Shared(std::shared_ptr<T> data)
        : m_data(std::move(data)) {}

    explicit operator bool() const { return m_data != nullptr; }
    void reset() { m_data.reset(); }
    bool sameAs(const Shared& other) const { return m_data == other.m_data; }

    const T& read() const {
        if (!m_data)
            throwNullReference();
        return *m_data;
    }
    const T* operator->() const { return &read(); }

    /** The data for changing: this handle's own, cloned first where it is shared. */
    T& edit() {
        if (!m_data)
            throwNullReference();
        if (m_data.use_count() != 1)
            m_data = std::make_shared<T>(*m_data);
        return *m_data;
    }

private:
    std::shared_ptr<T> m_data;
};

} // namespace detail
} // namespace OpenWBEM
#endif
