#ifndef OW_INTRUSIVE_COUNTABLE_BASE_HPP_INCLUDED
#define OW_INTRUSIVE_COUNTABLE_BASE_HPP_INCLUDED
#include "OW_config.h"
#include <atomic>

namespace OpenWBEM {

/** Base of classes with a reference count for IntrusiveReference. The last reference deletes the object. */
class OW_COMMON_API IntrusiveCountableBase {
protected:
    IntrusiveCountableBase()
        : m_references(0) {}
    IntrusiveCountableBase(const IntrusiveCountableBase&)
        : m_references(0) {}
    IntrusiveCountableBase& operator=(const IntrusiveCountableBase&) { return *this; }
    virtual ~IntrusiveCountableBase();

private:
    friend void IntrusiveReferenceAddRef(IntrusiveCountableBase* object) { ++object->m_references; }
    friend void IntrusiveReferenceRelease(IntrusiveCountableBase* object) {
        if (--object->m_references == 0)
            delete object;
    }

    std::atomic<unsigned> m_references;
};

} // namespace OpenWBEM
#endif
