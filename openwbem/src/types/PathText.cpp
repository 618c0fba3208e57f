// Object paths as texts.
#include "PathText.hpp"

#include "OW_CIMException.hpp"
#include "OW_CIMObjectPath.hpp"
#include "ObjectData.hpp"
#include "ValueText.hpp"
#include "io/Limits.hpp"

#include <string>

namespace OpenWBEM {

bool isLocalHost(const String& host) {
    return host.empty() || host.equalsIgnoreCase("localhost") || host == "127.0.0.1";
}

String cleanNameSpace(const String& nameSpace) {
    String text = nameSpace;
    text.trim();
    const char* const end = text.c_str() + text.length();
    const char* begin = text.c_str();
    while (*begin == '/')
        ++begin;
    return begin == text.c_str() ? text : String(begin, static_cast<std::size_t>(end - begin));
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
        // A path within a path within a path is escaped at each level, which doubles its backslashes.
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
