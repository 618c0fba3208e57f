#ifndef SBLIM_TIME_LIMIT_HPP
#define SBLIM_TIME_LIMIT_HPP

namespace sblim {

/** Milliseconds from the start of a command until it is killed. Tests change it; the library does not export
 * it. */
extern int timeLimit;

} // namespace sblim
#endif
