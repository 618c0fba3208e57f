#ifndef TESTS_OWB_LIBRARY_CALL_HPP
#define TESTS_OWB_LIBRARY_CALL_HPP
#include "owb.h"

#include "TestQueue.hpp"
#include "support/ScriptedPeer.hpp"
#include "support/Wire.hpp"

#include <functional>
#include <set>
#include <string>
#include <vector>

// Calls of the library whose allocations or system calls fail one after the other.

struct Call {
    std::function<long(TestQueue&)> make;
    /** What it may return, besides its result without a failure. */
    std::set<long> failures;
};

inline const Call readGroup = {[](TestQueue& q) { return OWB_getGroup(2, q.head()); }, {OWB_EXCEPTION}};

inline const Call readInstance = {[](TestQueue& q) {
                                      char path[] = "QAV_System.Name=\"host\"";
                                      return OWB_getInstance(2, path, 0, q.head());
                                  },
                                  {OWB_EXCEPTION}};

inline const Call writeGroup = {[](TestQueue& q) {
                                    OWB_itemAdd(q.head(), 2, 0, 0, 0, "x");
                                    return OWB_setGroup(2, q.head());
                                },
                                {OWB_EXCEPTION}};

inline const Call readSoftware = {[](TestQueue& q) { return OWB_getSWRun(q.head()); }, {}};

/** The call, which may also find no instance. */
inline Call orNoInstance(Call call) {
    call.failures.insert(OWB_NO_INSTANCE);
    return call;
}

inline std::string systemInstance() {
    using namespace support::wire;
    return instance("QAV_System",
                    {stringProperty("Description", "d"), property("SysServices", UINT32, bigEndian(72, 4)),
                     arrayProperty("SystemVersion", STRING, {text("one"), text("two")})});
}

/** The answer to readGroup. */
inline support::Step twoSystems() {
    using namespace support::wire;
    return support::Step::answer(chunkedReply(enumeration({systemInstance(), systemInstance()})));
}

/** The answer to readInstance. */
inline support::Step oneSystem() {
    return support::Step::answer(support::wire::plainReply(std::string(1, '\0') + systemInstance()));
}

/** The answer to both requests of writeGroup: the client ignores what follows the first byte of the second.
 */
inline support::Step writtenSystem() {
    using namespace support::wire;
    return support::Step::answer(chunkedReply(enumeration({systemInstance()})));
}

#endif
