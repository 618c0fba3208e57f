// Items with arbitrary texts, in each output format of owbctl.
#include "agent/Catalogue.hpp"
#include "formats/CsvFormat.hpp"
#include "formats/JsonFormat.hpp"
#include "formats/LineFormat.hpp"
#include "formats/TableFormat.hpp"
#include "output/Output.hpp"
#include "output/Text.hpp"

#include "support/Bytes.hpp"

#include <nlohmann/json.hpp>

#include <cstdlib>
#include <sys/mman.h>
#include <unistd.h>

namespace {

using namespace agent;
using namespace owbctl;

void check(bool is) {
    if (!is)
        std::abort();
}

Group group(fuzz::Bytes& bytes) {
    const long number = bytes.next() % (highestGroup + 1);
    const std::vector<const Attribute*> all = attributesOf(number);
    Group result{number, classOf(number).name, OWB_DONE, {}};
    while (!bytes.isEmpty()) {
        Row row{static_cast<long>(result.rows.size()), {}};
        for (const Attribute* attribute : all) {
            Property property{attribute, {}};
            for (std::uint8_t count = bytes.next() % 3; count > 0; --count) {
                const std::string text = bytes.text();
                property.values.emplace_back(text.c_str()); // an item ends at a NUL
            }
            if (!property.values.empty())
                row.properties.push_back(property);
        }
        result.rows.push_back(row);
    }
    return result;
}

/** The output of one format for a group. */
template <class Form, class... Arguments>
std::string printed(const Group& group, Arguments... arguments) {
    const int file = ::memfd_create("output", MFD_CLOEXEC);
    const int before = ::dup(STDOUT_FILENO);
    ::dup2(file, STDOUT_FILENO);
    {
        Output output;
        Form format(output, arguments...);
        format.writeGroup(group);
        format.endGroups();
    }
    ::dup2(before, STDOUT_FILENO);
    ::close(before);
    std::string text(static_cast<std::size_t>(::lseek(file, 0, SEEK_END)), '\0');
    check(::pread(file, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size()));
    ::close(file);
    return text;
}

/** Whether the text is safe on a terminal: UTF-8 without control characters except line feeds. */
bool isSafe(const std::string& text) {
    std::string line;
    for (const char c : text)
        line += c == '\n' ? std::string() : std::string(1, c);
    return printable(line) == line;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Bytes bytes(data, size);
    const Group any = group(bytes);
    const nlohmann::json document = nlohmann::json::parse(printed<JsonFormat>(any, std::string("url")));
    check(document.at("groups").at(0).at("rows").size() == any.rows.size());
    for (const Row& row : any.rows) {
        const nlohmann::json& properties =
            document["groups"][0]["rows"][static_cast<std::size_t>(row.number)]["properties"];
        for (std::size_t i = 0; i < row.properties.size(); ++i)
            check(properties.at(i).at("values").size() == row.properties[i].values.size());
    }
    check(isSafe(printed<TableFormat>(any)));
    check(isSafe(printed<LineFormat>(any)));
    const std::string csv = printed<CsvFormat>(any);
    check(validUtf8(csv) == csv);
    return 0;
}
