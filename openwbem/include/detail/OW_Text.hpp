#ifndef OW_DETAIL_TEXT_HPP_INCLUDED
#define OW_DETAIL_TEXT_HPP_INCLUDED
#include "../OW_config.h"
#include <atomic>
#include <cstddef>
#include <utility>

namespace OpenWBEM {
namespace detail {

/** The shared bytes of a string and a terminating NUL, in one allocation after the object. */
struct OW_COMMON_API Text {
    /** Allocates length uninitialized bytes and a NUL. The caller owns the first reference. Throws
     * std::bad_alloc. */
    static Text* make(std::size_t length);
    /** A reference to the empty text, which all empty strings share and which is never freed. */
    static Text* none() noexcept;
    static void free(Text* text) noexcept;

    const char* bytes() const noexcept { return reinterpret_cast<const char*>(this + 1); }
    char* bytes() noexcept { return reinterpret_cast<char*>(this + 1); }

    std::atomic<unsigned> handles;
    const std::size_t length;
};

/** Reference-counted pointer to a text; may be null. */
class TextHandle {
public:
    TextHandle() noexcept
        : m_text(nullptr) {}
    /** Takes ownership of a reference. */
    explicit TextHandle(Text* text) noexcept
        : m_text(text) {}
    TextHandle(const TextHandle& other) noexcept
        : m_text(other.m_text) {
        if (m_text)
            m_text->handles.fetch_add(1, std::memory_order_relaxed);
    }
    TextHandle(TextHandle&& other) noexcept
        : m_text(other.m_text) {
        other.m_text = nullptr;
    }
    ~TextHandle() {
        // A single handle needs no locked instruction: no other thread can copy it.
        if (m_text && (!isShared() || m_text->handles.fetch_sub(1, std::memory_order_acq_rel) == 1))
            Text::free(m_text);
    }
    TextHandle& operator=(const TextHandle& other) noexcept {
        TextHandle(other).swap(*this);
        return *this;
    }
    TextHandle& operator=(TextHandle&& other) noexcept {
        TextHandle(std::move(other)).swap(*this);
        return *this;
    }

    explicit operator bool() const noexcept { return m_text != nullptr; }
    Text* operator->() const noexcept { return m_text; }
    void swap(TextHandle& other) noexcept { std::swap(m_text, other.m_text); }
    bool sameAs(const TextHandle& other) const noexcept { return m_text == other.m_text; }
    /** Whether another handle refers to the same text; not for a null handle. */
    bool isShared() const noexcept { return m_text->handles.load(std::memory_order_acquire) != 1; }

private:
    Text* m_text;
};

} // namespace detail
} // namespace OpenWBEM
#endif
