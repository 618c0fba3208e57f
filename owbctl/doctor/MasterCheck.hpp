#ifndef OWBCTL_DOCTOR_MASTERCHECK_HPP
#define OWBCTL_DOCTOR_MASTERCHECK_HPP

#include "doctor/Check.hpp"

#include <optional>
#include <string>

namespace owbctl {

/** Whether the socket of the SNMP master exists, is a socket, and accepts a connection of this user.
 * Connects, but sends nothing. Nothing if the SNMP subagent is not installed: neither its program nor its
 * settings of snmpd exist.
 * @param root directory that precedes all paths; for tests */
std::optional<Check> checkMaster(const std::string& root = "");

} // namespace owbctl
#endif
