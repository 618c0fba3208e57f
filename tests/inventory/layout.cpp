// The layout of the record of a process, which compiled agents contain. It differs between platforms: on
// 32-bit ARM, 64-bit numbers have an alignment of 8 bytes, on 32-bit x86 one of 4.
#include "QAV_UnixProcessAPI.hpp"

#include <cstddef>

namespace {

using ApiRecord = QAV_UnixProcessAPI::tUnixProcess;

constexpr std::size_t padding = alignof(unsigned long long) == 8 ? 4 : 0;

constexpr bool isAt(std::size_t offset, std::size_t expected) {
    return sizeof(void*) != 4 || offset == expected;
}

static_assert(isAt(offsetof(ApiRecord, handle), 0), "handle");
static_assert(isAt(offsetof(ApiRecord, name), 4), "name");
static_assert(isAt(offsetof(ApiRecord, modulePath), 8), "modulePath");
static_assert(isAt(offsetof(ApiRecord, parameters), 12), "parameters");
static_assert(isAt(offsetof(ApiRecord, runType), 16), "runType");
static_assert(isAt(offsetof(ApiRecord, executionState), 18), "executionState");
static_assert(isAt(offsetof(ApiRecord, parentProcessID), 20), "parentProcessID");
static_assert(isAt(offsetof(ApiRecord, realUserID), 24), "realUserID");
static_assert(isAt(offsetof(ApiRecord, processGroupID), 32), "processGroupID");
static_assert(isAt(offsetof(ApiRecord, totalCpuTime), 40), "totalCpuTime");
static_assert(isAt(offsetof(ApiRecord, realText), 60 + padding), "realText");
static_assert(isAt(offsetof(ApiRecord, realData), 68 + padding), "realData");
static_assert(isAt(offsetof(ApiRecord, realStack), 76 + padding), "realStack");
static_assert(sizeof(void*) != 4 || sizeof(ApiRecord) == 84 + padding, "tUnixProcess");
static_assert(sizeof(void*) != 4 || sizeof(QAV_UnixProcessAPI) == 16, "QAV_UnixProcessAPI");

} // namespace
