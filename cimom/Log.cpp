#include "Log.hpp"

#include "Text.hpp"

#include <iostream>
#include <utility>

namespace cimom {

void log(std::string message) {
    std::cerr << "owbcimomd: " + onOneLine(std::move(message)) << std::endl;
}

} // namespace cimom
