// The layout of the record of a process, which compiled agents contain. It differs between platforms: on
// 32-bit ARM, 64-bit numbers have an alignment of 8 bytes, on 32-bit x86 one of 4.
#include "QAV_UnixProcessAPI.hpp"

#include <cstddef>

namespace {

using Record = QAV_UnixProcessAPI::tUnixProcess;

constexpr std::size_t padding = alignof(unsigned long long) == 8 ? 4 : 0;

constexpr bool isAt(std::size_t offset, std::size_t expected) {
    return sizeof(void*) != 4 || offset == expected;
}

static_assert(isAt(offsetof(Record, handle), 0), "handle");
static_assert(isAt(offsetof(Record, name), 4), "name");
static_assert(isAt(offsetof(Record, modulePath), 8), "modulePath");
static_assert(isAt(offsetof(Record, parameters), 12), "parameters");
static_assert(isAt(offsetof(Record, runType), 16), "runType");
static_assert(isAt(offsetof(Record, executionState), 18), "executionState");
static_assert(isAt(offsetof(Record, parentProcessID), 20), "parentProcessID");
static_assert(isAt(offsetof(Record, realUserID), 24), "realUserID");
static_assert(isAt(offsetof(Record, processGroupID), 32), "processGroupID");
static_assert(isAt(offsetof(Record, totalCpuTime), 40), "totalCpuTime");
static_assert(isAt(offsetof(Record, realText), 60 + padding), "realText");
static_assert(isAt(offsetof(Record, realData), 68 + padding), "realData");
static_assert(isAt(offsetof(Record, realStack), 76 + padding), "realStack");
static_assert(sizeof(void*) != 4 || sizeof(Record) == 84 + padding, "tUnixProcess");
static_assert(sizeof(void*) != 4 || sizeof(QAV_UnixProcessAPI) == 16, "QAV_UnixProcessAPI");

} // namespace
