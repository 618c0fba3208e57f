// A file of site instances. Each declared instance must be found by its path, and the client library must be
// able to decode it in both protocols.
#include "OW_WBEMFlags.hpp"
#include "binary/Request.hpp"
#include "cimom/ClientReading.hpp"
#include "cimom/Completed.hpp"
#include "objects/ObjectManager.hpp"
#include "protocol/BinaryHandler.hpp"
#include "protocol/XmlHandler.hpp"
#include "schema/InstanceSource.hpp"
#include "schema/Namespace.hpp"
#include "support/TempDir.hpp"
#include "xml/Request.hpp"

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

using namespace cimom;
using namespace OpenWBEM;

namespace {

using Type = CIMDataType;

const ClassDeclaration all{"All",
                           {{"Id", Type::STRING, Role::key},
                            {"U8", Type::UINT8},
                            {"S8", Type::SINT8},
                            {"U16", Type::UINT16},
                            {"S16", Type::SINT16},
                            {"U32", Type::UINT32, Role::key},
                            {"S32", Type::SINT32},
                            {"U64", Type::UINT64},
                            {"S64", Type::SINT64},
                            {"R32", Type::REAL32},
                            {"R64", Type::REAL64},
                            {"B", Type::BOOLEAN},
                            {"C", Type::CHAR16},
                            {"D", Type::DATETIME},
                            {"Us", Type::UINT16, Role::state, true},
                            {"Rs", Type::REAL64, Role::state, true},
                            {"Ss", Type::STRING, Role::state, true},
                            {"Ds", Type::DATETIME, Role::state, true},
                            {"Note", Type::STRING, Role::site}}};
const ClassDeclaration linkClass{"Link",
                                 {{"From", Type::REFERENCE, Role::key, false, "All"},
                                  {"To", Type::REFERENCE, Role::key, false, "Link"},
                                  {"Others", Type::REFERENCE, Role::state, true, "All"}}};

/** A class whose instances all come from the site. */
Provider siteProvider(const ClassDeclaration& declaration) {
    return {&declaration,
            [] { return eachOf(std::vector<CIMInstance>(), [](CIMInstance each) { return each; }); }};
}

ObjectManager siteManager() {
    return ObjectManager({siteProvider(all), siteProvider(linkClass)});
}

void requireFound(const SiteInstances& site, const ClassDeclaration& declaration) {
    const std::unique_ptr<InstanceSource> source = site.instances(declaration);
    while (const CIMInstance instance = source->next()) {
        if (!site.find(pathOf(instance)))
            std::abort();
    }
}

void requireDecodable(ObjectManager& manager, const ClassDeclaration& declaration) {
    const std::string body = binary::enumerateInstances(servedNamespace, declaration.name, WBEMFlags::E_DEEP);
    readAsBinaryClient(completed(BinaryHandler(manager).handle(body, Access::read)));
    const std::string document =
        xml::enumerateInstances(1, servedNamespace, declaration.name, WBEMFlags::E_DEEP).body;
    readAsXmlClient(completed(XmlHandler(manager).handle(document, Access::read)), document);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const support::TempDir directory;
    directory.write("site.json", std::string(reinterpret_cast<const char*>(data), size));
    ObjectManager manager = siteManager();
    try {
        const SiteInstances site(directory.path(), manager.declarations());
        requireFound(site, all);
        requireFound(site, linkClass);
        manager.setSiteInstances(site);
    } catch (const std::runtime_error&) {
        return 0;
    }
    requireDecodable(manager, all);
    requireDecodable(manager, linkClass);
    return 0;
}
