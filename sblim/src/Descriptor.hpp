#ifndef SBLIM_DESCRIPTOR_HPP
#define SBLIM_DESCRIPTOR_HPP
#include "util/Descriptor.hpp"

#include <fcntl.h>
#include <unistd.h>

namespace sblim {

/** A descriptor of the library. Its number never equals one that the shell of a command uses. */
class Descriptor : public util::Descriptor {
public:
    /** The lowest number that the shell of a command does not use. */
    static const int lowest = 5;

    /** Owns nothing. */
    Descriptor()
        : util::Descriptor(-1) {}

    /**
     * Takes ownership of a descriptor; negative: owns nothing. A low number (the caller may have closed its
     * standard descriptors) is replaced by a higher one, close-on-exec. Returns whether a descriptor is
     * owned.
     */
    bool take(int number) {
        if (number >= 0 && number < lowest) {
            const util::Descriptor low(number);
            reset(::fcntl(number, F_DUPFD_CLOEXEC, lowest));
        } else {
            reset(number);
        }
        return isOpen();
    }
};

} // namespace sblim
#endif
