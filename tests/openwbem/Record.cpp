#include "Record.hpp"

#include "OW_CIMProperty.hpp"
#include "OW_CIMValue.hpp"
#include "support/TempDir.hpp"

#include <algorithm>
#include <filesystem>
#include <ostream>

namespace record {

using namespace OpenWBEM;

namespace {

const std::filesystem::path captures = TEST_DATA "/captures";

const char* text(bool value) {
    return value ? "true" : "false";
}

void print(std::ostream& out, const CIMProperty& property) {
    const CIMDataType type = property.getDataType();
    out << "  " << property.getName() << " dt=" << type.toString() << '(' << type.getType()
        << ") dtArray=" << text(type.isArrayType()) << " isKey=" << text(property.isKey());
    const CIMValue value = property.getValue();
    if (!value) {
        out << " NULL\n";
        return;
    }
    const String valueText = value.toString();
    out << " vtype=" << value.getType() << " isArray=" << text(value.isArray())
        << " n=" << value.getArraySize() << " toString=["
        << std::string(valueText.c_str(), valueText.length()) << "]\n";
}

// Index after the chunks and trailers that start at an index; appends the data of the chunks to body.
std::size_t skipChunks(const std::string& bytes, std::size_t at, std::string& body) {
    while (const std::size_t size = std::stoul(bytes.substr(at, 16), nullptr, 16)) {
        at = bytes.find("\r\n", at) + 2;
        body += bytes.substr(at, size);
        at += size + 2;
    }
    return bytes.find("\r\n\r\n", at) + 4;
}

// Index after the message that starts at an index.
std::size_t skipMessage(const std::string& bytes, std::size_t at, std::string& body) {
    const std::size_t headEnd = bytes.find("\r\n\r\n", at) + 4;
    const std::string head = bytes.substr(at, headEnd - at);
    if (head.find("\r\nTransfer-Encoding: chunked") != std::string::npos)
        return skipChunks(bytes, headEnd, body);
    const std::string name = "\r\nContent-Length: ";
    const std::size_t length = head.find(name);
    if (length == std::string::npos)
        return headEnd;
    body = bytes.substr(headEnd, std::stoul(head.substr(length + name.size())));
    return headEnd + body.size();
}

} // namespace

std::string Conversation::file(const char* name) const {
    return support::readFile((captures / directory / name).string());
}

// Splits arguments like a shell: blanks separate, a backslash escapes the next character.
std::vector<std::string> Conversation::command() const {
    std::vector<std::string> arguments(1);
    const std::string line = file("cmd.txt");
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '\\' && i + 1 < line.size())
            arguments.back() += line[++i];
        else if (line[i] == ' ' || line[i] == '\n')
            arguments.emplace_back();
        else
            arguments.back() += line[i];
    }
    arguments.erase(std::remove(arguments.begin(), arguments.end(), ""), arguments.end());
    return arguments;
}

std::string Conversation::sent() const {
    return file("c2s.bin");
}

std::string Conversation::received() const {
    return file("s2c.bin");
}

std::string Conversation::result() const {
    return file("out.txt");
}

std::ostream& operator<<(std::ostream& out, const Conversation& conversation) {
    return out << conversation.directory;
}

std::vector<Conversation> conversations() {
    std::vector<Conversation> all;
    for (const auto& group : std::filesystem::directory_iterator(captures))
        if (group.is_directory())
            for (const auto& name : std::filesystem::directory_iterator(group))
                all.push_back({std::filesystem::relative(name, captures).string()});
    std::sort(all.begin(), all.end(),
              [](const Conversation& a, const Conversation& b) { return a.directory < b.directory; });
    return all;
}

std::vector<std::string> splitReplies(const std::string& bytes) {
    std::vector<std::string> replies;
    for (std::size_t at = 0; at < bytes.size();) {
        std::string body;
        const std::size_t end = skipMessage(bytes, at, body);
        replies.push_back(bytes.substr(at, end - at));
        at = end;
    }
    return replies;
}

std::string bodyOf(const std::string& message) {
    std::string body;
    skipMessage(message, 0, body);
    return body;
}

void print(std::ostream& out, const CIMInstance& instance) {
    out << "INSTANCE class=" << instance.getClassName() << '\n';
    const CIMPropertyArray properties = instance.getProperties();
    for (const CIMProperty& property : properties)
        print(out, property);
    out << "  [keys:";
    const CIMPropertyArray keys = instance.getKeyValuePairs();
    for (const CIMProperty& key : keys)
        out << ' ' << key.getName();
    out << "]\n";
}

void print(std::ostream& out, CIMInstanceEnumeration instances) {
    const std::size_t count = instances.numberOfElements();
    while (instances.hasMoreElements())
        print(out, instances.nextElement());
    out << "COUNT " << count << '\n';
}

void print(std::ostream& out, const Exception& e) {
    out << "op THREW type()=" << e.type() << " getMessage()=[" << e.getMessage() << "] what()=[" << e.what()
        << "] code=" << e.getErrorCode();
}

} // namespace record
