#ifndef SBLIM_TIME_LIMIT_HPP
#define SBLIM_TIME_LIMIT_HPP

namespace sblim {

/** Milliseconds from the start of a command until it is killed. Tests change it. Not exported. */
extern int timeLimit;

} // namespace sblim
#endif
