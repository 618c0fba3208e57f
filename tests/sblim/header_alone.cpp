// The header compiles as C++98.
#include "sblim_utilities.h"

int main() {
    char** out;
    const int status = runcommand("exit 3", 0, &out, 0);
    freeresultbuf(out);
    return status == 3 ? 0 : 1;
}
