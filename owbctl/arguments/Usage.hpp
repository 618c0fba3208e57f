#ifndef OWBCTL_ARGUMENTS_USAGE_HPP
#define OWBCTL_ARGUMENTS_USAGE_HPP

#include <stdexcept>

namespace owbctl {

/** The words of the command line make no command; what() says why. Nothing has been asked or sent. */
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace owbctl
#endif
