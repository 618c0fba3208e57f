#ifndef TESTS_SNMP_LOOP_HPP
#define TESTS_SNMP_LOOP_HPP
#include "snmp/ManagedObjects.hpp"

#include <boost/asio/io_context.hpp>
#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <vector>

namespace snmp_test {

/** Runs a loop until a condition holds, at most ten seconds. Returns whether it does. */
inline bool runUntil(boost::asio::io_context& io, const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!condition() && std::chrono::steady_clock::now() < end) {
        io.restart();
        io.run_one_for(std::chrono::milliseconds(20));
    }
    return condition();
}

/** Prepares the values after an object identifier. */
inline void prepare(boost::asio::io_context& io, snmp::Objects& objects, const snmp::Oid& start) {
    bool isReady = false;
    objects.prepare({start}, [&isReady] { isReady = true; });
    EXPECT_TRUE(runUntil(io, [&isReady] { return isReady; }));
}

/** All objects below an identifier, each prepared as for a manager. */
inline std::vector<snmp::VarBind> walk(boost::asio::io_context& io, snmp::Objects& objects,
                                       const snmp::Oid& root) {
    snmp::Oid end = root;
    ++end.back();
    std::vector<snmp::VarBind> all;
    for (snmp::Oid start = root;;) {
        prepare(io, objects, start);
        snmp::VarBind found = objects.next({start, false, end});
        if (found.value.type == snmp::Type::endOfMibView)
            return all;
        start = found.oid;
        all.push_back(std::move(found));
    }
}

/** Text of a value for comparisons: the number, the octets, the object identifier or the type's number. */
inline std::string shown(const snmp::Value& value) {
    if (const auto* number = std::get_if<std::uint64_t>(&value.content))
        return value.type == snmp::Type::integer ? std::to_string(static_cast<std::int64_t>(*number))
                                                 : std::to_string(*number);
    if (const auto* octets = std::get_if<std::string>(&value.content))
        return *octets;
    if (const auto* oid = std::get_if<snmp::Oid>(&value.content))
        return snmp::text(*oid);
    return "type " + std::to_string(static_cast<int>(value.type));
}

/** An object identifier below mib-2. */
inline snmp::Oid below(const char* oid) {
    return snmp::joined(snmp::mib2, snmp::parseOid(oid));
}

} // namespace snmp_test
#endif
