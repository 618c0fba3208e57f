#ifndef CIMOM_SYSTEM_NOTIFICATION_HPP_INCLUDED
#define CIMOM_SYSTEM_NOTIFICATION_HPP_INCLUDED
#include <string>

namespace cimom {

/**
 * Tells the service manager that has started this process a change of its state, such as "READY=1", by the
 * protocol of sd_notify(3): a datagram to the socket that the environment variable NOTIFY_SOCKET names. Does
 * nothing when no service manager asks for it; that it cannot be told is logged.
 */
void notifyServiceManager(const std::string& state);

} // namespace cimom
#endif
