#include "snmp/mapping/Syntax.hpp"

#include "snmp/mapping/Date.hpp"
#include "util/Ascii.hpp"
#include "util/Number.hpp"
#include "util/Utf8.hpp"

#include <algorithm>
#include <arpa/inet.h>
#include <limits>
#include <stdexcept>
#include <string>

namespace snmp {
namespace {

constexpr std::uint64_t highest32 = std::numeric_limits<std::uint32_t>::max();
constexpr std::int64_t highestInteger = std::numeric_limits<std::int32_t>::max();
constexpr std::int64_t lowestInteger = std::numeric_limits<std::int32_t>::min();

std::optional<std::uint64_t> integer(std::string_view text) {
    if (const auto number = util::number<std::int64_t>(text))
        return static_cast<std::uint64_t>(std::clamp(*number, lowestInteger, highestInteger));
    if (util::number<std::uint64_t>(text))
        return static_cast<std::uint64_t>(highestInteger);
    return std::nullopt;
}

std::optional<std::uint64_t> modulo32(std::string_view text) {
    const auto number = util::number<std::uint64_t>(text);
    return number ? std::optional(*number & highest32) : std::nullopt;
}

std::optional<std::uint64_t> gauge(std::string_view text) {
    const auto number = util::number<std::uint64_t>(text);
    return number ? std::optional(std::min(*number, highest32)) : std::nullopt;
}

std::optional<std::uint64_t> truth(std::string_view text) {
    if (text == "true")
        return 1;
    return text == "false" ? std::optional<std::uint64_t>(2) : std::nullopt;
}

std::optional<std::string> hexOctets(std::string_view text) {
    if (text.size() % 2 != 0)
        return std::nullopt;
    std::string octets;
    for (std::size_t i = 0; i < text.size(); i += 2) {
        const int high = ascii::hexDigit(text[i]);
        const int low = ascii::hexDigit(text[i + 1]);
        if (high < 0 || low < 0)
            return std::nullopt;
        octets += static_cast<char>(high * 16 + low);
    }
    const bool isZero = std::all_of(octets.begin(), octets.end(), [](char c) { return c == 0; });
    return isZero ? std::string() : octets;
}

std::optional<std::string> ipAddress(std::string_view text) {
    in_addr address{};
    if (::inet_pton(AF_INET, std::string(text).c_str(), &address) != 1)
        return std::nullopt;
    return std::string(reinterpret_cast<const char*>(&address), sizeof address);
}

std::optional<Oid> objectId(std::string_view text) {
    try {
        Oid oid = parseOid(text);
        return oid.size() < 2 ? std::nullopt : std::optional(std::move(oid));
    } catch (const std::invalid_argument&) {
        return std::nullopt;
    }
}

template <class Content>
std::optional<Value> valueOf(Type type, std::optional<Content> content) {
    return content ? std::optional(Value{type, std::move(*content)}) : std::nullopt;
}

} // namespace

Type typeOf(Syntax syntax) {
    switch (syntax) {
    case Syntax::counter32:
        return Type::counter32;
    case Syntax::gauge32:
        return Type::gauge32;
    case Syntax::counter64:
        return Type::counter64;
    case Syntax::timeTicks:
        return Type::timeTicks;
    case Syntax::octets:
    case Syntax::hexOctets:
    case Syntax::dateAndTime:
        return Type::octetString;
    case Syntax::ipAddress:
        return Type::ipAddress;
    case Syntax::objectId:
        return Type::objectIdentifier;
    default:
        return Type::integer;
    }
}

std::optional<Value> encoded(Syntax syntax, std::string_view text, std::size_t size) {
    const Type type = typeOf(syntax);
    switch (syntax) {
    case Syntax::counter32:
    case Syntax::timeTicks:
        return valueOf(type, modulo32(text));
    case Syntax::gauge32:
        return valueOf(type, gauge(text));
    case Syntax::counter64:
        return valueOf(type, util::number<std::uint64_t>(text));
    case Syntax::octets:
        return Value{type, std::string(cutAtCharacter(text, size))};
    case Syntax::hexOctets:
        return valueOf(type, hexOctets(text));
    case Syntax::ipAddress:
        return valueOf(type, ipAddress(text));
    case Syntax::objectId:
        return valueOf(type, objectId(text));
    case Syntax::dateAndTime:
        return valueOf(type, dateAndTime(text));
    case Syntax::truthValue:
        return valueOf(type, truth(text));
    default:
        return valueOf(type, integer(text));
    }
}

std::string_view cutAtCharacter(std::string_view text, std::size_t size) {
    if (text.size() <= size)
        return text;
    std::size_t end = size;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
        --end;
    // Bytes that continue nothing: no UTF-8, so any border is as good.
    return text.substr(0, end == 0 || size - end > 3 ? size : end);
}

bool isUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = utf8::firstCharacter(text).length;
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

} // namespace snmp
