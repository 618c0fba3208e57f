#include "Served.hpp"

#include "host/Host.hpp"
#include "providers/Providers.hpp"
#include "util/Ascii.hpp"

#include <algorithm>

namespace docs {
namespace {

std::string typeOf(const cimom::PropertyDeclaration& property) {
    const OpenWBEM::CIMDataType type = property.dataType();
    return std::string(type.toString().c_str()) + type.getArrayMOF().c_str();
}

} // namespace

std::vector<ServedProperty> servedProperties() {
    const cimom::Host host("/"); // declarations are constant: nothing is read from it
    boost::asio::io_context io;  // nothing runs in it
    std::vector<ServedProperty> served;
    for (const auto& provider : cimom::makeProviders(host, io)) {
        const cimom::ClassDeclaration& declaration = *provider.declaration;
        for (const cimom::PropertyDeclaration& property : declaration.properties)
            served.push_back({declaration.name, property.name, typeOf(property),
                              property.role == cimom::Role::key, property.role == cimom::Role::site});
    }
    return served;
}

const ServedProperty* findServed(const std::vector<ServedProperty>& served, const std::string& className,
                                 const std::string& name) {
    const auto found = std::find_if(served.begin(), served.end(), [&](const ServedProperty& each) {
        return each.className == className && ascii::equalsIgnoreCase(each.name, name);
    });
    return found == served.end() ? nullptr : &*found;
}

} // namespace docs
