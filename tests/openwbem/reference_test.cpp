#include "OW_IntrusiveCountableBase.hpp"
#include "OW_IntrusiveReference.hpp"

#include <cstddef>
#include <gtest/gtest.h>

namespace {

using OpenWBEM::IntrusiveCountableBase;
using OpenWBEM::IntrusiveReference;

struct Base : IntrusiveCountableBase {
    explicit Base(int& alive)
        : m_alive(alive) {
        ++m_alive;
    }
    ~Base() override { --m_alive; }
    int& m_alive;
};
struct Derived : Base {
    using Base::Base;
};

TEST(IntrusiveReference, LastOneDeletesTheObject) {
    int alive = 0;
    {
        IntrusiveReference<Base> a(new Base(alive));
        const IntrusiveReference<Base> b = a;
        a = 0;
        EXPECT_EQ(1, alive);
    }
    EXPECT_EQ(0, alive);
}

TEST(IntrusiveReference, IsFalseIfItIsNull) {
    int alive = 0;
    IntrusiveReference<Base> a;
    EXPECT_TRUE(!a && a.isNull() && a == NULL && a == nullptr);
    a = new Base(alive);
    EXPECT_TRUE(a && !a.isNull() && a != NULL);
}

TEST(IntrusiveReference, ComparesTheIdentityOfObjects) {
    int alive = 0;
    const IntrusiveReference<Derived> a(new Derived(alive));
    const IntrusiveReference<Base> b = a;
    const IntrusiveReference<Base> c(new Base(alive));
    EXPECT_TRUE(a == b && a == b.getPtr() && a.getPtr() == b);
    EXPECT_TRUE(b != c && b != c.getPtr() && b.getPtr() != c);
    EXPECT_NE(b < c, c < b);
}

TEST(IntrusiveReference, CastsDown) {
    int alive = 0;
    const IntrusiveReference<Base> derived(new Derived(alive));
    const IntrusiveReference<Base> base(new Base(alive));
    EXPECT_TRUE(derived.cast_to<Derived>() == derived);
    EXPECT_FALSE(base.cast_to<Derived>());
}

} // namespace
