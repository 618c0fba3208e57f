#include "OW_CIMObjectPath.hpp"

#include "ObjectData.hpp"

#include <string>

namespace OpenWBEM {
namespace {

bool isLocal(const String& host) {
    return host.empty() || host.equalsIgnoreCase("localhost") || host == "127.0.0.1";
}

String withoutLeadingSlashes(const String& nameSpace) {
    const char* text = nameSpace.c_str();
    while (*text == '/')
        ++text;
    return text;
}

} // namespace

CIMObjectPath::CIMObjectPath()
    : m_data(std::make_shared<Data>()) {}
CIMObjectPath::CIMObjectPath(CIMNULL_t) {}
CIMObjectPath::CIMObjectPath(const CIMName& className)
    : CIMObjectPath() {
    m_data.edit().className = className;
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

String CIMObjectPath::getClassName() const {
    return m_data->className.toString();
}

String CIMObjectPath::getNameSpace() const {
    return m_data->nameSpace;
}

String CIMObjectPath::getHost() const {
    return m_data->host;
}

CIMPropertyArray CIMObjectPath::getKeys() const {
    return m_data->keys;
}

CIMObjectPath& CIMObjectPath::setKeys(const CIMPropertyArray& keys) {
    m_data.edit().keys = keys;
    return *this;
}

CIMObjectPath& CIMObjectPath::setNameSpace(const String& nameSpace) {
    m_data.edit().nameSpace = withoutLeadingSlashes(nameSpace);
    return *this;
}

CIMObjectPath& CIMObjectPath::setHost(const String& host) {
    m_data.edit().host = host;
    return *this;
}

void CIMObjectPath::setNull() {
    m_data.reset();
}

String CIMObjectPath::toString() const {
    const Data& data = m_data.read();
    String text;
    if (!isLocal(data.host)) {
        text = data.protocol + "://" + data.host;
        if (data.port != "5988")
            text += ":" + data.port;
    }
    return text + "/" + data.nameSpace + ":" + modelPath();
}

String CIMObjectPath::modelPath() const {
    const Data& data = m_data.read();
    String text = data.className.toString();
    String separator = ".";
    for (const CIMProperty& key : std::as_const(data.keys)) {
        const CIMValue value = key.getValue();
        text += separator + key.getName() + "=\"" + escape(value ? value.toString() : "null") + "\"";
        separator = ",";
    }
    return text;
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
    return String(escaped.data(), escaped.size());
}

} // namespace OpenWBEM
