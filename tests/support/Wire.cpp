#include "support/Wire.hpp"

namespace support::wire {
namespace {

const char crlf[] = "\r\n"; // not a std::string: replies are also built before main()

std::string hex(std::size_t value) {
    static const char digits[] = "0123456789abcdef";
    std::string result;
    do
        result.insert(result.begin(), digits[value % 16]);
    while (value /= 16);
    return result;
}

std::string propertyHead(const std::string& name, Type type, bool isArray) {
    const std::string size =
        isArray ? std::string("\x84\xff\xff\xff\xff\x01", 6) : std::string("\x01\x00", 2);
    return "R" + text(name) + text("") + text("") + "D" + static_cast<char>(type) + size + text("") +
           "\x84\xff\xff\xff\xff" + std::string(2, '\0');
}

const char yes[] = "h\x01";

std::string no() {
    return std::string("h\0", 2);
}

std::string requestHead(char operation) {
    return std::string("\0\x2d\xc6\xc8", 4) + operation + "j" + text("root/cimv2");
}

std::string head(const std::string& status, const std::vector<std::string>& headers) {
    std::string result = "HTTP/1.1 " + status + crlf;
    for (const std::string& header : headers)
        result += header + crlf;
    return result + crlf;
}

} // namespace

std::string bigEndian(unsigned long long value, unsigned bytes) {
    std::string result;
    for (unsigned i = 0; i < bytes; ++i, value >>= 8)
        result.insert(result.begin(), static_cast<char>(value & 0xff));
    return result;
}

std::string number(std::size_t value) {
    if (value < 0x80)
        return std::string(1, static_cast<char>(value));
    return "\x84" + bigEndian(value, 4);
}

std::string text(const std::string& value) {
    return number(value.size()) + value;
}

std::string property(const std::string& name, Type type, const std::string& value) {
    return propertyHead(name, type, false) + '\x01' + 'V' + static_cast<char>(type) + '\0' + value;
}

std::string arrayProperty(const std::string& name, Type type, const std::vector<std::string>& values) {
    std::string result = propertyHead(name, type, true) + '\x01' + 'V' + static_cast<char>(type) + '\x01';
    result += number(values.size());
    for (const std::string& value : values)
        result += value;
    return result;
}

std::string nullProperty(const std::string& name, Type type, bool isArray) {
    return propertyHead(name, type, isArray) + '\0';
}

std::string instance(const std::string& className, const std::vector<std::string>& properties) {
    std::string result = "i\x01" + text(className) + number(0) + number(properties.size());
    for (const std::string& each : properties)
        result += each;
    return result + number(0) + text("");
}

std::string objectPath(const std::string& nameSpace, const std::string& url, const std::string& className,
                       const std::vector<std::string>& keys) {
    std::string result = "ON" + text(nameSpace) + "U" + text(url) + text(className) + number(keys.size());
    for (const std::string& each : keys)
        result += each;
    return result;
}

std::string enumerateRequest(const std::string& className) {
    return requestHead('\x19') + "j" + text(className) + yes + no() + no() + no() + yes;
}

std::string getRequest(const std::string& path) {
    return requestHead('\x1d') + path + no() + no() + no() + yes;
}

std::string modifyRequest(const std::string& instance) {
    return requestHead('\x23') + instance + yes + yes;
}

std::string enumeration(const std::vector<std::string>& instances) {
    std::string result("\0o", 2);
    for (const std::string& each : instances)
        result += each;
    return result + "\x98\x98";
}

std::string chunkedReply(const std::string& body, const std::vector<std::string>& trailers) {
    std::string result = head("200 Ok", {"Content-Type: application/x-owbinary; charset=\"utf-8\"",
                                         "Transfer-Encoding: chunked", "07-CIMOperation: MethodResponse",
                                         "Trailer: 07-CIMError, 07-CIMStatusCode, 07-CIMStatusDescription"});
    for (std::size_t at = 0; at < body.size(); at += 4096) {
        const std::string chunk = body.substr(at, 4096);
        result += hex(chunk.size()) + crlf + chunk + crlf;
    }
    result += std::string("0") + crlf;
    for (const std::string& trailer : trailers)
        result += trailer + crlf;
    return result + crlf;
}

std::string cimErrorReply(int code, const std::string& description) {
    return chunkedReply(
        "", {"07-CIMStatusCode: " + std::to_string(code), "07-CIMStatusDescription: " + description + " "});
}

std::string plainReply(const std::string& body) {
    return head("200 Ok", {"Content-Length: " + std::to_string(body.size())}) + body;
}

std::string statusReply(const std::string& status, const std::vector<std::string>& headers) {
    std::vector<std::string> all = headers;
    all.push_back("Content-Length: 0");
    return head(status, all);
}

} // namespace support::wire
