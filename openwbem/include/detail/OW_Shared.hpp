#ifndef OW_DETAIL_SHARED_HPP_INCLUDED
#define OW_DETAIL_SHARED_HPP_INCLUDED
#include "../OW_config.h"
#include <atomic>
#include <utility>

namespace OpenWBEM {
namespace detail {

/** Throws the exception of a call on a null handle. */
[[noreturn]] OW_COMMON_API void throwNullReference();

/** Base of reference-counted data. The last handle deletes it. */
class OW_COMMON_API Counted {
public:
    virtual ~Counted() = default;

    void addHandle() const { m_handles.fetch_add(1, std::memory_order_relaxed); }
    void removeHandle() const {
        // A single handle needs no locked instruction: no other thread can copy it.
        if (!isShared() || m_handles.fetch_sub(1, std::memory_order_acq_rel) == 1)
            delete this;
    }
    bool isShared() const { return m_handles.load(std::memory_order_acquire) != 1; }

protected:
    Counted()
        : m_handles(0) {}
    Counted(const Counted&)
        : m_handles(0) {}
    Counted& operator=(const Counted&) { return *this; }

private:
    mutable std::atomic<unsigned> m_handles;
};

/**
 * Copy-on-write handle to shared data; may be null. Reading or writing through a null handle throws an
 * OpenWBEM::Exception. T derives from Counted, and may be incomplete where the data is neither read nor
 * created. Different threads may use different copies, but only one thread at a time may use one handle.
 */
template <class T>
class Shared {
public:
    Shared()
        : m_data(nullptr) {}
    /** Takes ownership of new data. */
    explicit Shared(T* data)
        : m_data(data) {
        m_data->addHandle();
    }
    Shared(const Shared& other)
        : m_data(other.m_data) {
        if (m_data)
            m_data->addHandle();
    }
    Shared(Shared&& other) noexcept
        : m_data(other.m_data) {
        other.m_data = nullptr;
    }
    /** Converts the type of the handle. The data must be a T. */
    template <class U>
    explicit Shared(Shared<U> other) noexcept
        : m_data(other.m_data) {
        other.m_data = nullptr;
    }
    ~Shared() { reset(); }
    Shared& operator=(const Shared& other) { // NOLINT(bugprone-unhandled-self-assignment): copies and swaps
        Shared(other).swap(*this);
        return *this;
    }
    Shared& operator=(Shared&& other) noexcept {
        Shared(std::move(other)).swap(*this);
        return *this;
    }

    explicit operator bool() const { return m_data != nullptr; }
    void reset() {
        if (m_data)
            m_data->removeHandle();
        m_data = nullptr;
    }
    void swap(Shared& other) noexcept { std::swap(m_data, other.m_data); }
    bool sameAs(const Shared& other) const { return m_data == other.m_data; }

    const T& read() const {
        if (!m_data)
            throwNullReference();
        return static_cast<const T&>(*m_data);
    }
    const T* operator->() const { return &read(); }

    /** The data for writing. Clones shared data first. */
    T& edit() {
        if (read().isShared())
            *this = Shared(new T(read()));
        return *unshared();
    }
    /** The data for writing; null if the handle is null or the data is shared. */
    T* unshared() {
        return m_data && !m_data->isShared() ? const_cast<T*>(static_cast<const T*>(m_data)) : nullptr;
    }

private:
    template <class U>
    friend class Shared;
    const Counted* m_data;
};

} // namespace detail
} // namespace OpenWBEM
#endif
