#include "doctor/ManagerCheck.hpp"

#include "agent/Group.hpp"
#include "agent/Status.hpp"

#include <chrono>
#include <cstdio>

namespace owbctl {
namespace {

constexpr const char* name = "manager";
/** The operating system: one small instance, which every object manager has. */
constexpr long askedFor = 4;

std::string milliseconds(std::chrono::steady_clock::duration time) {
    char text[64];
    std::snprintf(text, sizeof text, "%.1f ms", std::chrono::duration<double, std::milli>(time).count());
    return text;
}

} // namespace

Check checkManager(const std::string& url, const Trace& trace) {
    const std::string what = "group " + std::to_string(askedFor) + " (" + ExtGroupCimClass[askedFor] + ")";
    const auto start = std::chrono::steady_clock::now();
    const Group group = readGroup(askedFor);
    const std::string time = milliseconds(std::chrono::steady_clock::now() - start);
    if (group.status != OWB_DONE) {
        const std::string reason = trace.lastError();
        return {Check::Result::fail, name,
                what + " cannot be read: " + (reason.empty() ? failureText(group.status, url) : reason),
                "See that the object manager runs and serves the URL; what it says itself is in its log"};
    }
    if (group.rows.empty())
        return {Check::Result::warn, name, "answers in " + time + ", but has no instance for " + what,
                "See whether the object manager has providers for the classes that 'owbctl groups' lists"};
    return {Check::Result::ok, name, "answers for " + what + " in " + time, {}};
}

} // namespace owbctl
