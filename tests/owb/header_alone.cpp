// A C++ agent without the headers of the client library: owb.h compiles, and its functions link.
#include "owb.h"

#include "owb.h"

int main() {
    char text[] = " x ";
    _qHead queue;
    queue.first = queue.last = queue.cursor = reinterpret_cast<_qItem*>(&queue);
    queue.size = 0;
    queue.agent = 0;
    return owbStringClean(text, 0) == text && text[0] == 'x' && OWB_itemExists(&queue, 0, 0, 0, 0) == 0 ? 0
                                                                                                        : 1;
}
