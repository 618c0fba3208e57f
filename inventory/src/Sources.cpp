#include "Sources.hpp"

namespace inventory {

const char* procFolder = "/proc";
const char* softwareInventory = "/kq/bin/softinv";

} // namespace inventory
