#include "OW_CIMObjectPath.hpp"

#include "OW_CIMException.hpp"
#include "OW_NoSuchPropertyException.hpp"
#include "ObjectData.hpp"
#include "ValueText.hpp"
#include "io/Limits.hpp"

#include <algorithm>
#include <string>
#include <vector>

namespace OpenWBEM {
namespace {

// A key for comparison.
struct Key {
    String name;
    String value;

    int compare(const Key& other) const {
        const int names = name.compareToIgnoreCase(other.name);
        return names ? names : value.compareTo(other.value);
    }
};

std::vector<Key> sorted(const CIMPropertyArray& keys) {
    std::vector<Key> result;
    for (const CIMProperty& key : keys)
        result.push_back({key.getName(), key.getValue().toString()});
    std::sort(result.begin(), result.end(), [](const Key& a, const Key& b) { return a.compare(b) < 0; });
    return result;
}

int compareKeys(const CIMPropertyArray& a, const CIMPropertyArray& b) {
    if (a.size() != b.size())
        return a.size() < b.size() ? -1 : 1;
    const std::vector<Key> left = sorted(a);
    const std::vector<Key> right = sorted(b);
    for (std::size_t i = 0; i < left.size(); ++i)
        if (const int result = left[i].compare(right[i]))
            return result;
    return 0;
}

int compareAddresses(const CIMObjectPath::Data& a, const CIMObjectPath::Data& b) {
    if (isLocalHost(a.host) || isLocalHost(b.host))
        return isLocalHost(b.host) - isLocalHost(a.host);
    const int hosts = a.host.compareToIgnoreCase(b.host);
    return hosts ? hosts : a.port.compareTo(b.port);
}

// A namespace without surrounding white space and leading slashes.
String cleanNameSpace(const String& nameSpace) {
    String text = nameSpace;
    text.trim();
    const char* const end = text.c_str() + text.length();
    const char* begin = text.c_str();
    while (*begin == '/')
        ++begin;
    return begin == text.c_str() ? text : String(begin, static_cast<std::size_t>(end - begin));
}

[[noreturn]] void throwInvalid(const char* what, const String& text) {
    OW_THROWCIMMSG(CIMException::INVALID_PARAMETER, (what + text).c_str());
}

// Removes the text up to the end of a mark and returns the part before the mark.
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

// Reads the keys of `<name>=<value>,...`.
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
                ++i; // the escaped character
                continue;
            }
            if (c == '"')
                isQuoted = !isQuoted;
            if (isQuoted)
                continue;
            if (c == '=')
                m_value = i + 1;
            if (isLast)
                endKey(i + 1); // a final comma belongs to the value
            else if (c == ',')
                endKey(i++); // the first character of a name is never a separator
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
    std::size_t m_value = String::npos; // start of the current key's value
    CIMPropertyArray m_keys;
};

} // namespace

bool isLocalHost(const String& host) {
    return host.empty() || host.equalsIgnoreCase("localhost") || host == "127.0.0.1";
}

CIMObjectPath::CIMObjectPath()
    : m_data(new Data) {}
CIMObjectPath::CIMObjectPath(CIMNULL_t) {}
CIMObjectPath::CIMObjectPath(const CIMName& className)
    : CIMObjectPath() {
    setClassName(className);
}
CIMObjectPath::CIMObjectPath(const char* className)
    : CIMObjectPath(CIMName(className)) {}
CIMObjectPath::CIMObjectPath(const CIMName& className, const String& nameSpace)
    : CIMObjectPath(className) {
    setNameSpace(nameSpace);
}
CIMObjectPath::CIMObjectPath(const CIMName& className, const CIMPropertyArray& keys)
    : CIMObjectPath(className) {
    setKeys(keys);
}
CIMObjectPath::CIMObjectPath(const String& nameSpace, const CIMInstance& instance)
    : CIMObjectPath(instance.getClassName(), nameSpace) {
    setKeys(instance);
}

String CIMObjectPath::getClassName() const {
    return m_data->className.toString();
}

CIMObjectPath& CIMObjectPath::setClassName(const CIMName& className) {
    m_data.edit().className = className;
    return *this;
}

String CIMObjectPath::getNameSpace() const {
    return m_data->nameSpace;
}

CIMObjectPath& CIMObjectPath::setNameSpace(const String& nameSpace) {
    m_data.edit().nameSpace = cleanNameSpace(nameSpace);
    return *this;
}

String CIMObjectPath::getHost() const {
    return m_data->host;
}

CIMObjectPath& CIMObjectPath::setHost(const String& host) {
    m_data.edit().host = host;
    return *this;
}

CIMPropertyArray CIMObjectPath::getKeys() const {
    return m_data->keys;
}

CIMObjectPath& CIMObjectPath::setKeys(const CIMPropertyArray& keys) {
    m_data.edit().keys = keys;
    return *this;
}

CIMObjectPath& CIMObjectPath::setKeys(const CIMInstance& instance) {
    return setKeys(instance.getKeyValuePairs());
}

CIMProperty CIMObjectPath::getKey(const CIMName& name) const {
    const CIMPropertyArray& keys = m_data->keys;
    const auto found = findByName(keys, name);
    return found == keys.end() ? CIMProperty(CIMNULL) : *found;
}

CIMProperty CIMObjectPath::getKeyT(const CIMName& name) const {
    CIMProperty key = getKey(name);
    if (!key)
        OW_THROW(NoSuchPropertyException, name.toString().c_str());
    return key;
}

CIMValue CIMObjectPath::getKeyValue(const CIMName& name) const {
    const CIMProperty key = getKey(name);
    return key ? key.getValue() : CIMValue(CIMNULL);
}

bool CIMObjectPath::keyHasValue(const CIMName& name) const {
    return static_cast<bool>(getKeyValue(name));
}

CIMObjectPath& CIMObjectPath::setKeyValue(const CIMName& name, const CIMValue& value) {
    CIMPropertyArray& keys = m_data.edit().keys;
    const auto found = findByName(keys, name);
    if (found != keys.end())
        found->setValue(value);
    else
        keys.push_back(value ? CIMProperty(name, value) : CIMProperty(name));
    return *this;
}

bool CIMObjectPath::isClassPath() const {
    return m_data->keys.empty();
}

int CIMObjectPath::compare(const CIMObjectPath& other) const {
    if (m_data.sameAs(other.m_data))
        return 0;
    if (!m_data || !other.m_data)
        return m_data ? 1 : -1;
    const Data& a = m_data.read();
    const Data& b = other.m_data.read();
    if (const int addresses = compareAddresses(a, b))
        return addresses;
    if (const int nameSpaces = a.nameSpace.compareTo(b.nameSpace))
        return nameSpaces;
    if (const int classes = a.className.toString().compareToIgnoreCase(b.className.toString()))
        return classes;
    return compareKeys(a.keys, b.keys);
}

void CIMObjectPath::setNull() {
    m_data.reset();
}

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

String CIMObjectPath::toString() const {
    const Data& data = m_data.read();
    String text;
    if (!isLocalHost(data.host)) {
        text = data.protocol + "://" + data.host;
        if (data.port != "5988")
            text += ":" + data.port;
    }
    return text + "/" + data.nameSpace + ":" + modelPath();
}

String CIMObjectPath::toMOF() const {
    return escape(toString());
}

String CIMObjectPath::modelPath() const {
    const Data& data = m_data.read();
    std::string text;
    appendText(text, data.className.toString());
    const char* separator = ".";
    for (const CIMProperty& key : data.keys) {
        const CIMValue value = key.getValue();
        text += separator;
        appendText(text, key.getName());
        text += "=\"";
        appendText(text, escape(value ? value.toString() : "null"));
        text += '"';
        separator = ",";
        // Nested paths are escaped at each level, which doubles their backslashes.
        if (text.size() > io::maximumText)
            OW_THROWCIMMSG(CIMException::FAILED, "object path is too long");
    }
    return stringOf(text);
}

String CIMObjectPath::escape(const String& text) {
    std::string escaped;
    for (const char* c = text.c_str(); *c; ++c) {
        if (*c == '\n') {
            escaped += "\\n";
            continue;
        }
        if (*c == '\\' || *c == '"')
            escaped += '\\';
        escaped += *c;
    }
    return stringOf(escaped);
}

String CIMObjectPath::unEscape(const String& text) {
    std::string plain;
    for (const char* c = text.c_str(); *c; ++c) {
        if (*c == '\\' && !*++c)
            break;
        plain += *c;
    }
    return stringOf(plain);
}

} // namespace OpenWBEM
