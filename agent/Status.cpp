#include "agent/Status.hpp"

#include <owb.h>

namespace owbctl {

int exitStatus(long status) {
    return status == OWB_DONE ? 0 : static_cast<int>(10 + status);
}

bool mayBeUnreachable(long status) {
    return status == OWB_NO_CONNECTION || status == OWB_EXCEPTION;
}

std::string failureText(long status, const std::string& url) {
    switch (status) {
    case OWB_NO_INSTANCE:
        return "the object manager at " + url + " gave no instance";
    case OWB_BAD_ARGUMENT:
        return "the library refused an argument";
    case OWB_NO_CONNECTION:
        return "no connection to the object manager at " + url;
    default:
        return "no answer from the object manager at " + url + ", or it reported an error";
    }
}

} // namespace owbctl
