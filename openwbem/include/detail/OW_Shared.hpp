#ifndef OW_DETAIL_SHARED_HPP_INCLUDED
#define OW_DETAIL_SHARED_HPP_INCLUDED
#include "../OW_config.h"
#include <atomic>
#include <utility>

namespace OpenWBEM {
namespace detail {

/** Throws the exception of a call on a null handle. */
[[noreturn]] OW_COMMON_API void throwNullReference();

/** Base of data that handles share. The last handle deletes it, whatever it knows of the data's type. */
class OW_COMMON_API Counted {
public:
    virtual ~Counted() = default;

    void addHandle() const { m_handles.fetch_add(1, std::memory_order_relaxed); }
    void removeHandle() const {
        // The only handle needs no locked instruction: nobody else can make a second one.
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
 * Copy-on-write handle to data that copies share; may be null. Reading or changing a null handle throws an
 * OpenWBEM::Exception. T derives from Counted; only what reads or makes data needs to know it whole. Copies
 * may be used in different threads, one handle only in one thread at a time.
 */
template <class T>
class Shared {
public:
    Shared()
        : m_data(nullptr) {}
    /** Takes over new data. */
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
    /** A handle of another type to the same data, which is a T. */
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

    /** The data for changing: this handle's own, cloned first where it is shared. */
    T& edit() {
        if (read().isShared())
            *this = Shared(new T(read()));
        return *unshared();
    }
    /** The data for changing; null where there is none or it is shared. */
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
