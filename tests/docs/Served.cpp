/*
 * Prints what owbcimomd declares, one property a line: class, property, type, and "key", "site" (the site's
 * to write) or "state". groups_document makes its table from it.
 */
#include "host/Host.hpp"
#include "objects/Provider.hpp"
#include "providers/Providers.hpp"

#include <iostream>

namespace {

const char* nameOf(cimom::Role role) {
    switch (role) {
    case cimom::Role::key:
        return "key";
    case cimom::Role::site:
        return "site";
    default:
        return "state";
    }
}

std::string typeOf(const cimom::PropertyDeclaration& property) {
    const OpenWBEM::CIMDataType type = property.dataType();
    return std::string(type.toString().c_str()) + type.getArrayMOF().c_str();
}

} // namespace

int main() {
    const cimom::Host host("/"); // declarations are constant: nothing is read from it
    boost::asio::io_context io;  // nor does anything run in it
    for (const auto& provider : cimom::makeProviders(host, io)) {
        const cimom::ClassDeclaration& declaration = provider->declaration();
        for (const cimom::PropertyDeclaration& property : declaration.properties)
            std::cout << declaration.name << ' ' << property.name << ' ' << typeOf(property) << ' '
                      << nameOf(property.role) << '\n';
    }
    return std::cout.flush() ? 0 : 1;
}
