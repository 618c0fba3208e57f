#ifndef SNMP_SESSION_SETTINGS_HPP
#define SNMP_SESSION_SETTINGS_HPP

#include "snmp/session/MasterAddress.hpp"

#include <chrono>
#include <functional>
#include <string>

namespace snmp {

/** How a session talks to its master. */
struct Settings {
    MasterAddress master{};
    /** Where the objects are registered; empty for the default context. */
    std::string context = "owb";
    /** Writes a line to the log. */
    std::function<void(const std::string&)> log = [](const std::string&) {};
    /** Time for the master to accept the connection, and to reply to a PDU. A master that takes longer is
     * lost. */
    std::chrono::milliseconds replyTime = std::chrono::seconds(10);
    /** Time without a PDU after which the master is pinged. */
    std::chrono::milliseconds idleTime = std::chrono::seconds(30);
    /** Pause before the first attempt to reconnect. It doubles with each failed attempt. */
    std::chrono::milliseconds firstPause = std::chrono::seconds(1);
    /** Longest pause. A session that lasts longer starts the pauses again at the first one. */
    std::chrono::milliseconds longestPause = std::chrono::seconds(60);
};

/** The pause before an attempt to reconnect, after a number of failed attempts. */
std::chrono::milliseconds pauseAfter(unsigned failures, const Settings& settings);

} // namespace snmp
#endif
