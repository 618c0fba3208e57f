#ifndef AGENT_WRITE_HPP
#define AGENT_WRITE_HPP

#include "agent/Change.hpp"

#include <string>
#include <vector>

namespace owbctl {

/** What came of writing one row. */
struct Write {
    long group;
    long row;
    /** Of the library, at the step that ended it. */
    long status = OWB_DONE;
    /** Why there is nothing to compare; empty when there is. */
    std::string error;
    /** As compare() gives them; none after an error. */
    std::vector<Change> changes;
};

} // namespace owbctl
#endif
