#ifndef TESTS_SNMP_SESSION_TEST_HPP
#define TESTS_SNMP_SESSION_TEST_HPP
#include "snmp/FakeObjects.hpp"
#include "snmp/Pdus.hpp"
#include "snmp/ScriptedMaster.hpp"
#include "snmp/session/Session.hpp"
#include "support/TempDir.hpp"

#include <boost/asio/io_context.hpp>
#include <chrono>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

/** A session with a scripted master, in one thread. Four texts are served. */
class SessionTest : public testing::Test {
protected:
    SessionTest() {
        objects.roots = {{1, 3, 6, 1, 2, 1, 1}, {1, 3, 6, 1, 2, 1, 2}};
        for (std::uint32_t i = 1; i <= 4; ++i)
            objects.setText(oid(i), "text " + std::to_string(i));
        settings.master = *snmp::masterAddress(master.address());
        settings.log = [this](const std::string& line) { log.push_back(line); };
        settings.firstPause = std::chrono::milliseconds(1);
    }

    static snmp::Oid oid(std::uint32_t number) { return {1, 3, 6, 1, 2, 1, 1, number, 0}; }

    /** Starts the session; the master has not accepted it yet. */
    void start() {
        session.emplace(io, objects, settings);
        session->start();
    }
    /** Starts the session. Returns when it has registered its objects. */
    void establish() {
        start();
        master.establish(objects.roots.size() + objects.capabilities.size());
    }
    /** A line of the log. */
    std::string line(const std::string& message) const {
        return "master " + master.address() + ": " + message;
    }
    /** The error of the response to a PDU. */
    unsigned errorOf(const std::string& pdu) { return master.exchange(pdu).error; }

    support::TempDir directory;
    boost::asio::io_context io{1};
    FakeObjects objects;
    ScriptedMaster master{io, directory.file("master")};
    snmp::Settings settings;
    std::vector<std::string> log;
    pdus::Head head;
    std::optional<snmp::Session> session;
};

#endif
