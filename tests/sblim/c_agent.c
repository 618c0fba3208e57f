/* The header and the library for an agent in C89. */
#include "sblim_utilities.h"

#include <string.h>

int main(void) {
    char text[] = "one";
    char* in[2];
    char** out;
    int right;

    in[0] = text;
    in[1] = 0;
    if (runcommand("cat", in, &out, 0) != 0)
        return 1;
    right = strcmp(out[0], "one") == 0 && !out[1];
    freeresultbuf(out);
    return right ? 0 : 1;
}
