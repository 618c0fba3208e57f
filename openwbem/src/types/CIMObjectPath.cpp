#include "OW_CIMObjectPath.hpp"

#include "OW_NoSuchPropertyException.hpp"
#include "ObjectData.hpp"
#include "PathText.hpp"

#include <algorithm>
#include <vector>

namespace OpenWBEM {
namespace {

/** A key for comparing. */
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

} // namespace

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

} // namespace OpenWBEM
