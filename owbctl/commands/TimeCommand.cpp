#include "commands/TimeCommand.hpp"

#include "agent/Status.hpp"
#include "output/Text.hpp"

#include <iostream>

namespace owbctl {

int showConversion(const Conversion& conversion, Format& format) {
    format.writeConversion(conversion);
    if (conversion.number)
        return 0;
    std::cerr << "owbctl: '" << printable(conversion.text) << "': " << conversion.error << '\n';
    return exitFailed;
}

} // namespace owbctl
