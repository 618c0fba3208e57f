#ifndef TESTS_OWB_FAILING_CALL_HPP
#define TESTS_OWB_FAILING_CALL_HPP
#include "LibraryCall.hpp"

#include <cerrno>
#include <gtest/gtest.h>

/** Errors that a system call may report, and that no caller mistakes for another result. */
inline const int errors[] = {EINTR, EAGAIN, EMFILE, ENOSPC, EIO, ENOMEM, ENOBUFS, EACCES};

struct Outcome {
    long result;
    Items items;
};

inline Outcome make(const Call& call) {
    TestQueue q;
    const long result = call.make(q);
    EXPECT_TRUE(q.isConsistent());
    return {result, q.items()};
}

/** A call of the library in which each system call fails in turn, with the error of the parameter. */
class FailingCall : public testing::TestWithParam<int> {};

#endif
