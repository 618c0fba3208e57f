#ifndef TESTS_OWB_LIBRARY_CALL_HPP
#define TESTS_OWB_LIBRARY_CALL_HPP
#include "owb.h"

#include "TestQueue.hpp"
#include "support/ScriptedPeer.hpp"
#include "support/Wire.hpp"

#include <cerrno>
#include <functional>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

/** Everything that a call may be told, and that nobody may take for anything else. */
inline const int errors[] = {EINTR, EAGAIN, EMFILE, ENOSPC, EIO, ENOMEM, ENOBUFS, EACCES};

struct Outcome {
    long result;
    Items items;
};

struct Call {
    std::function<long(TestQueue&)> make;
    /** What it may return besides what it does when all goes well. */
    std::set<long> failures;
};

inline Outcome make(const Call& call) {
    TestQueue q;
    const long result = call.make(q);
    EXPECT_TRUE(q.isConsistent());
    return {result, q.items()};
}

inline std::string systemInstance() {
    return support::wire::instance(
        "QAV_System",
        {support::wire::stringProperty("Description", "d"),
         support::wire::property("SysServices", support::wire::UINT32, support::wire::bigEndian(72, 4))});
}

inline support::Step enumerationOf(const std::vector<std::string>& instances) {
    return support::Step::answer(support::wire::chunkedReply(support::wire::enumeration(instances)));
}

inline const Call readSystem = {[](TestQueue& q) { return OWB_getGroup(2, q.head()); }, {OWB_EXCEPTION}};

inline const Call writeSystem = {[](TestQueue& q) {
                                     OWB_itemAdd(q.head(), 2, 0, 0, 0, "x");
                                     return OWB_setGroup(2, q.head());
                                 },
                                 {OWB_EXCEPTION}};

/** A call of the library in which each system call fails with the error of the parameter, in turn. */
class FailingCall : public testing::TestWithParam<int> {};

#endif
