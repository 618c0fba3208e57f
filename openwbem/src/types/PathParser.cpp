// Reading object paths.
#include "OW_CIMException.hpp"
#include "OW_CIMObjectPath.hpp"
#include "ObjectData.hpp"
#include "PathText.hpp"

namespace OpenWBEM {
namespace {

[[noreturn]] void throwInvalid(const char* what, const String& text) {
    OW_THROWCIMMSG(CIMException::INVALID_PARAMETER, (what + text).c_str());
}

// Cuts a text up to and including a mark and returns what stood before it.
String cutBefore(String& text, std::size_t mark, std::size_t markLength = 1) {
    String before = text.substring(0, mark);
    text = text.substring(mark + markLength);
    return before;
}

// `<host>[:<port>]`
void readAddress(const String& address, CIMObjectPath::Data& path) {
    const std::size_t colon = address.indexOf(':');
    path.host = address.substring(0, colon);
    if (path.host.equalsIgnoreCase("localhost"))
        path.host = LocalAddress::get().host;
    if (colon == String::npos)
        return;
    try {
        path.port = String(UInt32{address.substring(colon + 1).toUInt16()});
    } catch (const StringConversionException&) {
        OW_THROWCIMMSG(CIMException::INVALID_PARAMETER, "Invalid port in Object Path");
    }
}

/** Finds the keys in `<name>=<value>,...`. */
class KeyScanner {
public:
    explicit KeyScanner(const String& text)
        : m_text(text) {}

    CIMPropertyArray scan() {
        bool isQuoted = false;
        for (std::size_t i = 0; i < m_text.length(); ++i) {
            const bool isLast = i + 1 == m_text.length();
            const char c = m_text.charAt(i);
            if (c == '\\' && !isLast) {
                ++i; // what follows has no meaning
                continue;
            }
            if (c == '"')
                isQuoted = !isQuoted;
            if (isQuoted)
                continue;
            if (c == '=')
                m_value = i + 1;
            if (isLast)
                endKey(i + 1); // a comma here belongs to the value
            else if (c == ',')
                endKey(i++); // a name's first character has no meaning
        }
        return m_keys;
    }

private:
    void endKey(std::size_t end) {
        if (m_value == String::npos) {
            const String name = m_text.substring(m_begin, end - m_begin);
            OW_THROWCIMMSG(CIMException::NOT_FOUND, ("Bad key in string (" + name + ")").c_str());
        }
        const String name = m_text.substring(m_begin, m_value - 1 - m_begin);
        const bool isInQuotes = m_text.charAt(m_value) == '"';
        const std::size_t first = isInQuotes ? m_value + 1 : m_value;
        const std::size_t last = isInQuotes ? end - 1 : end;
        const String value = CIMObjectPath::unEscape(m_text.substring(first, last - first));
        m_keys.push_back(CIMProperty(name, CIMValue(value)));
        m_begin = end + 1;
        m_value = String::npos;
    }

    const String m_text;
    std::size_t m_begin = 0;
    std::size_t m_value = String::npos; // where the value of the current key begins
    CIMPropertyArray m_keys;
};

} // namespace

CIMObjectPath CIMObjectPath::parse(const String& text) {
    String rest = text;
    if (rest.trim().empty())
        return CIMObjectPath(CIMNULL);
    CIMObjectPath path;
    Data& data = path.m_data.edit();
    data.protocol = "HTTP";
    const std::size_t mark = rest.indexOf("://");
    if (mark != String::npos) {
        data.protocol = cutBefore(rest, mark, 3);
        const std::size_t slash = rest.indexOf('/');
        if (slash == String::npos)
            throwInvalid("Invalid instance name: ", text);
        readAddress(cutBefore(rest, slash), data);
    } else if (rest.startsWith('/')) {
        cutBefore(rest, 0);
    }
    const std::size_t colon = rest.indexOf(':');
    data.nameSpace = colon == String::npos ? String("root") : cleanNameSpace(cutBefore(rest, colon));
    const std::size_t dot = rest.indexOf('.');
    if (dot == String::npos)
        throwInvalid("class name not found in instance name: ", text);
    data.className = cutBefore(rest, dot);
    if (rest.empty())
        throwInvalid("No key values found in instance name: ", text);
    data.keys = KeyScanner(rest).scan();
    return path;
}

} // namespace OpenWBEM
