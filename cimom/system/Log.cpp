#include "system/Log.hpp"

#include "system/Text.hpp"

#include <iostream>
#include <utility>

namespace cimom {

void log(std::string message) {
    std::cerr << "owbcimomd: " + onOneLine(std::move(message)) << std::endl;
}

} // namespace cimom
