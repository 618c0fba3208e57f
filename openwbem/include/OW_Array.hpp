#ifndef OW_ARRAY_HPP_INCLUDED
#define OW_ARRAY_HPP_INCLUDED
#include "OW_ArrayFwd.hpp"
#include "OW_Exception.hpp"
#include "OW_Types.hpp"
#include "detail/OW_Shared.hpp"
#include <algorithm>
#include <cstddef>
#include <iterator>
#include <limits>
#include <memory>
#include <new>
#include <stdexcept>
#include <type_traits>
#include <utility>
#include <vector>

namespace OpenWBEM {

OW_DECLARE_EXCEPTION(OutOfBounds)

namespace detail {
/** Throws the OutOfBoundsException of an index into an array of this size. */
[[noreturn]] OW_COMMON_API void throwOutOfBounds(std::size_t size, std::size_t index);
} // namespace detail

/**
 * Copy-on-write vector. Copies share their elements. The first access through a non-const array, begin() and
 * end() included, copies shared elements; older iterators then still point to the shared ones. Members that
 * check an index throw OutOfBoundsException; iterators, front(), back() and pop_back() are not checked.
 * Different threads may use different copies, but only one thread at a time may use one array.
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
    /** n value-initialized elements. */
    explicit Array(size_type n) { resize(n); }
    /** n copies of a value. */
    Array(size_type n, const T& value) { resize(n, value); }
    Array(int n, const T& value)
        : Array(static_cast<size_type>(n), value) {}
    Array(long n, const T& value)
        : Array(static_cast<size_type>(n), value) {}
    template <class It, class Category = typename std::iterator_traits<It>::iterator_category>
    Array(It first, It last) {
        if (std::is_base_of<std::forward_iterator_tag, Category>::value)
            reserve(static_cast<size_type>(std::distance(first, last)));
        for (; first != last; ++first)
            emplace(*first);
    }
    /** Takes ownership of a vector created by new. */
    explicit Array(Vector* adopted)
        : Array(std::unique_ptr<Vector>(adopted)) {}

    iterator begin() { return iterator(edit(0).items()); }
    iterator end() { return begin() + static_cast<difference_type>(size()); }
    const_iterator begin() const { return const_iterator(items()); }
    const_iterator end() const { return begin() + static_cast<difference_type>(size()); }
    reverse_iterator rbegin() { return reverse_iterator(end()); }
    reverse_iterator rend() { return reverse_iterator(begin()); }
    const_reverse_iterator rbegin() const { return const_reverse_iterator(end()); }
    const_reverse_iterator rend() const { return const_reverse_iterator(begin()); }
    size_type size() const { return m_elements ? m_elements->size : 0; }
    size_type max_size() const {
        return (std::numeric_limits<difference_type>::max() - sizeof(Elements)) / sizeof(T);
    }
    size_type capacity() const { return m_elements ? m_elements->capacity : 0; }
    bool empty() const { return size() == 0; }

    /** Checks the index. */
    reference operator[](size_type i) {
        check(i);
        return edit(0).items()[i];
    }
    const_reference operator[](size_type i) const {
        check(i);
        return items()[i];
    }
    reference front() { return *begin(); }
    reference back() { return *(end() - 1); }
    const_reference front() const { return *begin(); }
    const_reference back() const { return *(end() - 1); }

    void push_back(T value) { emplace(std::move(value)); }
    void append(const T& value) { push_back(value); }
    Array& operator+=(const T& value) {
        push_back(value);
        return *this;
    }
    void appendArray(const Array& other) {
        const Array copy(other); // NOLINT(performance-unnecessary-copy-initialization): may be *this
        insert(end(), copy.begin(), copy.end());
    }
    void pop_back() {
        Elements& own = edit(0);
        own.items()[--own.size].~T();
    }
    iterator insert(iterator at, const T& value) {
        const difference_type index = at - begin();
        push_back(value);
        std::rotate(begin() + index, end() - 1, end());
        return begin() + index;
    }
    /** Inserts at an index, which may be the size. */
    void insert(size_type i, const T& value) { insert(begin() + static_cast<difference_type>(i), value); }
    template <class It>
    void insert(iterator at, It first, It last) {
        const difference_type index = at - begin();
        const auto before = static_cast<difference_type>(size());
        for (; first != last; ++first)
            emplace(*first);
        std::rotate(begin() + index, begin() + before, end());
    }
    iterator erase(iterator at) { return erase(at, at + 1); }
    iterator erase(iterator first, iterator last) {
        const difference_type index = first - begin();
        for (iterator end = std::move(last, this->end(), first); end != this->end();)
            pop_back();
        return begin() + index;
    }
    /** Checks the index. */
    void remove(size_type i) { remove(i, i + 1); }
    /** Removes the elements [first, last). Checks the first and the last index. */
    void remove(size_type first, size_type last) {
        check(first);
        check(last - 1);
        if (first < last)
            erase(begin() + static_cast<difference_type>(first),
                  begin() + static_cast<difference_type>(last));
    }
    void reserve(size_type n) {
        if (n > capacity())
            edit(n);
    }
    void resize(size_type n) { resize(n, T()); }
    void resize(size_type n, const T& value) {
        const T copy(value); // value may be an element
        reserve(n);
        while (size() < n)
            push_back(copy);
        while (size() > n)
            pop_back();
    }
    void clear() { m_elements.reset(); }
    void swap(Array& other) noexcept { m_elements.swap(other.m_elements); }

    friend bool operator==(const Array& a, const Array& b) {
        return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin());
    }
    friend bool operator!=(const Array& a, const Array& b) { return !(a == b); }
    friend bool operator<(const Array& a, const Array& b) {
        return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end());
    }
    friend bool operator<=(const Array& a, const Array& b) { return !(b < a); }
    friend bool operator>(const Array& a, const Array& b) { return b < a; }
    friend bool operator>=(const Array& a, const Array& b) { return !(a < b); }
    friend void swap(Array& a, Array& b) noexcept { a.swap(b); }

private:
    friend struct ValueAccess;

    /** Shared by copies. One allocation; the elements follow the object. */
    struct Elements : detail::Counted {
        static Elements* make(size_type capacity) {
            return new (::operator new(sizeof(Elements) + capacity * sizeof(T))) Elements(capacity);
        }
        explicit Elements(size_type room)
            : size(0)
            , capacity(room) {}
        Elements(const Elements&) = delete;
        Elements& operator=(const Elements&) = delete;
        ~Elements() override {
            while (size > 0)
                items()[--size].~T();
        }
        static void operator delete(void* memory) { ::operator delete(memory); }

        T* items() { return reinterpret_cast<T*>(this + 1); }
        const T* items() const { return reinterpret_cast<const T*>(this + 1); }

        size_type size;
        const size_type capacity;
    };

    explicit Array(std::unique_ptr<Vector> adopted)
        : Array(std::make_move_iterator(adopted->begin()), std::make_move_iterator(adopted->end())) {}
    explicit Array(detail::Shared<Elements> elements)
        : m_elements(std::move(elements)) {}

    void check(size_type i) const {
        if (i >= size())
            detail::throwOutOfBounds(size(), i);
    }
    const T* items() const { return m_elements ? m_elements->items() : nullptr; }

    /** Appends an element. The value must not be an element of this array. */
    template <class Value>
    void emplace(Value&& value) {
        Elements& own = edit(size() < capacity() ? 0 : 2 * size() + 1);
        new (own.items() + own.size) T(std::forward<Value>(value));
        ++own.size;
    }

    /** Unshared elements for writing, with a capacity of at least n. */
    Elements& edit(size_type n) {
        Elements* const own = m_elements.unshared();
        if (own && n <= own->capacity)
            return *own;
        static_assert(sizeof(Elements) % alignof(T) == 0, "no padding before the elements");
        if (n > max_size())
            throw std::length_error("Array");
        // malloc() never returns less room than this.
        const size_type minimum = sizeof(T) < 12 ? 12 / sizeof(T) : 1;
        Elements* const fresh = Elements::make(std::max(std::max(n, minimum), size()));
        detail::Shared<Elements> handle(fresh);
        for (; fresh->size < size(); ++fresh->size) {
            if (own)
                new (fresh->items() + fresh->size) T(std::move(own->items()[fresh->size]));
            else
                new (fresh->items() + fresh->size) T(items()[fresh->size]);
        }
        m_elements.swap(handle);
        return *fresh;
    }

    detail::Shared<Elements> m_elements; // may be null for an empty array
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
