#ifndef OW_ARRAY_HPP_INCLUDED
#define OW_ARRAY_HPP_INCLUDED
#include "OW_ArrayFwd.hpp"
#include "OW_Exception.hpp"
#include "OW_Types.hpp"
#include "detail/OW_Shared.hpp"
#include <cstddef>
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
 * before then point to the elements shared so far. Indexes out of range throw OutOfBoundsException where that
 * is said; iterators, front(), back() and pop_back() are not checked. Copies may be used in different
 * threads, one array only in one thread at a time.
 */
template <class T>
class Array {
    typedef std::vector<T> Vector;

public:
    typedef typename Vector::value_type value_type;
    typedef typename Vector::pointer pointer;
    typedef typename Vector::const_pointer const_pointer;
    typedef typename Vector::iterator iterator;
    typedef typename Vector::const_iterator const_iterator;
    typedef typename Vector::reverse_iterator reverse_iterator;
    typedef typename Vector::const_reverse_iterator const_reverse_iterator;
    typedef typename Vector::reference reference;
    typedef typename Vector::const_reference const_reference;
    typedef typename Vector::size_type size_type;
    typedef typename Vector::difference_type difference_type;

    Array() = default;
    /** n elements in their default state. */
    explicit Array(size_type n)
        : m_elements(new Elements(Vector(n))) {}
    /** n copies of a value. */
    Array(size_type n, const T& value)
        : m_elements(new Elements(Vector(n, value))) {}
    Array(int n, const T& value)
        : Array(static_cast<size_type>(n), value) {}
    Array(long n, const T& value)
        : Array(static_cast<size_type>(n), value) {}
    template <class It>
    Array(It first, It last)
        : m_elements(new Elements(Vector(first, last))) {}
    /** Takes over a vector that new gave. */
    explicit Array(Vector* adopted)
        : Array(std::unique_ptr<Vector>(adopted)) {}

    iterator begin() { return edit().begin(); }
    iterator end() { return edit().end(); }
    const_iterator begin() const { return read().begin(); }
    const_iterator end() const { return read().end(); }
    reverse_iterator rbegin() { return edit().rbegin(); }
    reverse_iterator rend() { return edit().rend(); }
    const_reverse_iterator rbegin() const { return read().rbegin(); }
    const_reverse_iterator rend() const { return read().rend(); }
    size_type size() const { return read().size(); }
    size_type max_size() const { return read().max_size(); }
    size_type capacity() const { return read().capacity(); }
    bool empty() const { return read().empty(); }

    /** Checks the index. */
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
        const Array copy(other); // NOLINT(performance-unnecessary-copy-initialization): it may be this one
        insert(end(), copy.begin(), copy.end());
    }
    void pop_back() { edit().pop_back(); }
    iterator insert(iterator at, const T& value) { return edit().insert(at, value); }
    /** At an index, which may be the size. */
    void insert(size_type i, const T& value) { insert(begin() + static_cast<difference_type>(i), value); }
    template <class It>
    void insert(iterator at, It first, It last) {
        edit().insert(at, first, last);
    }
    iterator erase(iterator at) { return edit().erase(at); }
    iterator erase(iterator first, iterator last) { return edit().erase(first, last); }
    /** Checks the index. */
    void remove(size_type i) { remove(i, i + 1); }
    /** Removes the elements from first on to the one before last; both must be in range. */
    void remove(size_type first, size_type last) {
        check(first);
        check(last - 1);
        if (first < last)
            erase(begin() + static_cast<difference_type>(first),
                  begin() + static_cast<difference_type>(last));
    }
    void reserve(size_type n) { edit().reserve(n); }
    void resize(size_type n) { edit().resize(n); }
    void resize(size_type n, const T& value) { edit().resize(n, value); }
    void clear() { m_elements.reset(); }
    void swap(Array& other) noexcept { m_elements.swap(other.m_elements); }

    friend bool operator==(const Array& a, const Array& b) { return a.read() == b.read(); }
    friend bool operator!=(const Array& a, const Array& b) { return a.read() != b.read(); }
    friend bool operator<(const Array& a, const Array& b) { return a.read() < b.read(); }
    friend bool operator<=(const Array& a, const Array& b) { return a.read() <= b.read(); }
    friend bool operator>(const Array& a, const Array& b) { return a.read() > b.read(); }
    friend bool operator>=(const Array& a, const Array& b) { return a.read() >= b.read(); }
    friend void swap(Array& a, Array& b) noexcept { a.swap(b); }

private:
    struct Elements : detail::Counted {
        explicit Elements(Vector elements)
            : vector(std::move(elements)) {}
        Vector vector;
    };

    explicit Array(std::unique_ptr<Vector> adopted)
        : m_elements(new Elements(std::move(*adopted))) {}

    void check(size_type i) const {
        if (i >= size())
            detail::throwOutOfBounds(size(), i);
    }
    const Vector& read() const {
        if (m_elements)
            return m_elements.read().vector;
        static const Vector none;
        return none;
    }
    Vector& edit() {
        if (!m_elements)
            m_elements = detail::Shared<Elements>(new Elements(Vector()));
        return m_elements.edit().vector;
    }

    detail::Shared<Elements> m_elements; // null stands for an empty array
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
