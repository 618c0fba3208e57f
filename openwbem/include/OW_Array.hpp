#ifndef OW_ARRAY_HPP_INCLUDED
#define OW_ARRAY_HPP_INCLUDED
#include "OW_ArrayFwd.hpp"
#include "OW_Exception.hpp"
#include "OW_Types.hpp"
#include <memory>
#include <utility>
#include <vector>

namespace OpenWBEM {

OW_DECLARE_EXCEPTION(OutOfBounds)

namespace detail {
/** Throws OutOfBoundsException for an index that an array of this size does not have. */
[[noreturn]] OW_COMMON_API void throwOutOfBounds(std::size_t size, std::size_t index);
} // namespace detail

/**
 * Vector whose copies share their elements until one of them is changed. Any access through a non-const
 * array, begin() and end() included, counts as a change and gives it elements of its own; iterators taken
 * before then point to the elements shared so far. Indexes out of range throw OutOfBoundsException.
 */
template <class T>
class Array {
    typedef std::vector<T> Vector;

public:
    typedef typename Vector::value_type value_type;
    typedef typename Vector::iterator iterator;
    typedef typename Vector::const_iterator const_iterator;
    typedef typename Vector::reference reference;
    typedef typename Vector::const_reference const_reference;
    typedef typename Vector::size_type size_type;
    typedef typename Vector::difference_type difference_type;

    Array() = default;
    explicit Array(size_type n)
        : m_vector(std::make_shared<Vector>(n)) {}
    Array(size_type n, const T& value)
        : m_vector(std::make_shared<Vector>(n, value)) {}
    Array(int n, const T& value)
        : Array(static_cast<size_type>(n), value) {}
    template <class It>
    Array(It first, It last)
        : m_vector(std::make_shared<Vector>(first, last)) {}

    iterator begin() { return edit().begin(); }
    iterator end() { return edit().end(); }
    const_iterator begin() const { return read().begin(); }
    const_iterator end() const { return read().end(); }
    size_type size() const { return m_vector ? m_vector->size() : 0; }
    size_type capacity() const { return m_vector ? m_vector->capacity() : 0; }
    bool empty() const { return size() == 0; }

    reference operator[](size_type i) {
        check(i);
        return edit()[i];
    }
    const_reference operator[](size_type i) const {
        check(i);
        return read()[i];
    }
    reference front() { return edit().front(); }
    reference back() { return edit().back(); }
    const_reference front() const { return read().front(); }
    const_reference back() const { return read().back(); }

    void push_back(const T& value) { edit().push_back(value); }
    void push_back(T&& value) { edit().push_back(std::move(value)); }
    void append(const T& value) { push_back(value); }
    Array& operator+=(const T& value) {
        push_back(value);
        return *this;
    }
    void appendArray(const Array& other) {
        const Array copy(other);
        Vector& vector = edit();
        vector.insert(vector.end(), copy.begin(), copy.end());
    }
    void pop_back() { edit().pop_back(); }
    iterator insert(iterator at, const T& value) { return edit().insert(at, value); }
    iterator erase(iterator at) { return edit().erase(at); }
    iterator erase(iterator first, iterator last) { return edit().erase(first, last); }
    void remove(size_type i) {
        check(i);
        Vector& vector = edit();
        vector.erase(vector.begin() + static_cast<difference_type>(i));
    }
    void reserve(size_type n) { edit().reserve(n); }
    void resize(size_type n) { edit().resize(n); }
    void clear() { m_vector.reset(); }
    void swap(Array& other) { m_vector.swap(other.m_vector); }

    friend bool operator==(const Array& a, const Array& b) { return a.read() == b.read(); }
    friend bool operator!=(const Array& a, const Array& b) { return !(a == b); }

private:
    void check(size_type i) const {
        if (i >= size())
            detail::throwOutOfBounds(size(), i);
    }
    const Vector& read() const {
        static const Vector none;
        return m_vector ? *m_vector : none;
    }
    Vector& edit() {
        if (!m_vector)
            m_vector = std::make_shared<Vector>();
        else if (m_vector.use_count() != 1)
            m_vector = std::make_shared<Vector>(*m_vector);
        return *m_vector;
    }

    std::shared_ptr<Vector> m_vector; // null stands for an empty array
};

typedef Array<UInt8> UInt8Array;
typedef Array<Int8> Int8Array;
typedef Array<UInt16> UInt16Array;
typedef Array<Int16> Int16Array;
typedef Array<UInt32> UInt32Array;
typedef Array<Int32> Int32Array;
typedef Array<UInt64> UInt64Array;
typedef Array<Int64> Int64Array;
typedef Array<Real32> Real32Array;
typedef Array<Real64> Real64Array;

} // namespace OpenWBEM
#endif
