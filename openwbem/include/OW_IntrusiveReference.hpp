#ifndef OW_INTRUSIVE_REFERENCE_HPP_INCLUDED
#define OW_INTRUSIVE_REFERENCE_HPP_INCLUDED
#include "OW_config.h"
#include "detail/OW_SafeBool.hpp"
#include <cstddef>
#include <functional>
#include <utility>

namespace OpenWBEM {

/**
 * Reference to an object with an embedded reference count, which IntrusiveReferenceAddRef(T*) and
 * IntrusiveReferenceRelease(T*) maintain. May be null; dereferencing a null reference is undefined behaviour.
 */
template <class T>
class IntrusiveReference {
public:
    IntrusiveReference()
        : m_object(NULL) {}
    IntrusiveReference(T* object, bool addRef = true)
        : m_object(object) {
        if (m_object && addRef)
            IntrusiveReferenceAddRef(m_object);
    }
    IntrusiveReference(const IntrusiveReference& other)
        : m_object(other.m_object) {
        if (m_object)
            IntrusiveReferenceAddRef(m_object);
    }
    template <class U>
    IntrusiveReference(const IntrusiveReference<U>& other)
        : m_object(other.getPtr()) {
        if (m_object)
            IntrusiveReferenceAddRef(m_object);
    }
    ~IntrusiveReference() {
        if (m_object)
            IntrusiveReferenceRelease(m_object);
    }
    IntrusiveReference& operator=(IntrusiveReference other) {
        swap(other);
        return *this;
    }

    T* getPtr() const { return m_object; }
    T& operator*() const { return *m_object; }
    T* operator->() const { return m_object; }
    operator detail::SafeBool() const { return detail::safeBool(m_object != NULL); }
    bool operator!() const { return m_object == NULL; }
    bool isNull() const { return m_object == NULL; }
    void swap(IntrusiveReference& other) { std::swap(m_object, other.m_object); }
    /** The object as a U; null if it is not a U. */
    template <class U>
    IntrusiveReference<U> cast_to() const {
        return IntrusiveReference<U>(dynamic_cast<U*>(m_object));
    }

private:
    T* m_object;
};

/** References are equal if they refer to the same object. */
template <class T, class U>
bool operator==(const IntrusiveReference<T>& a, const IntrusiveReference<U>& b) {
    return a.getPtr() == b.getPtr();
}
template <class T, class U>
bool operator==(const IntrusiveReference<T>& a, U* b) {
    return a.getPtr() == b;
}
template <class T, class U>
bool operator==(T* a, const IntrusiveReference<U>& b) {
    return a == b.getPtr();
}
template <class T, class U>
bool operator!=(const IntrusiveReference<T>& a, const IntrusiveReference<U>& b) {
    return a.getPtr() != b.getPtr();
}
template <class T, class U>
bool operator!=(const IntrusiveReference<T>& a, U* b) {
    return a.getPtr() != b;
}
template <class T, class U>
bool operator!=(T* a, const IntrusiveReference<U>& b) {
    return a != b.getPtr();
}
/** An order for sorting. */
template <class T>
bool operator<(const IntrusiveReference<T>& a, const IntrusiveReference<T>& b) {
    return std::less<T*>()(a.getPtr(), b.getPtr());
}

} // namespace OpenWBEM
#endif
