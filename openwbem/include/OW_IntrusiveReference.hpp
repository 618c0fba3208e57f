#ifndef OW_INTRUSIVE_REFERENCE_HPP_INCLUDED
#define OW_INTRUSIVE_REFERENCE_HPP_INCLUDED
#include "OW_config.h"
#include <cstddef>
#include <utility>

namespace OpenWBEM {

/**
 * Counted reference to an object that carries its own count, through IntrusiveReferenceAddRef(T*) and
 * IntrusiveReferenceRelease(T*). May be null; dereferencing a null reference is undefined.
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
    explicit operator bool() const { return m_object != NULL; }
    bool operator!() const { return m_object == NULL; }
    void swap(IntrusiveReference& other) { std::swap(m_object, other.m_object); }

private:
    T* m_object;
};

} // namespace OpenWBEM
#endif
