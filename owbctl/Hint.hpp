#ifndef OWBCTL_HINT_HPP
#define OWBCTL_HINT_HPP

namespace owbctl {

/** Says on standard error how to find out why the object manager could not be reached. */
void hintAtConnection();

/** Says on standard error how to find the cause of what the library does not tell. */
void hintAtTrace();

} // namespace owbctl
#endif
