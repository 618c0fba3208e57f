#ifndef SERVICE_EVENT_LOOP_HPP_INCLUDED
#define SERVICE_EVENT_LOOP_HPP_INCLUDED
#include "service/Log.hpp"

#include <exception>

namespace service {

/** Runs an io_context again after each exception, which has ended only the session that threw it. */
template <class Run>
void runDespiteExceptions(Run run) {
    for (bool isDone = false; !isDone;) {
        try {
            run();
            isDone = true;
        } catch (const std::exception& e) {
            logWithoutMemory("connection closed", e.what());
        }
    }
}

} // namespace service
#endif
