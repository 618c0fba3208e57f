// Instances, classes, paths and their parts. ValueReader.cpp reads values.
#include "binary/ObjectReader.hpp"

#include "binary/Protocol.hpp"

#include <string_view>

namespace OpenWBEM {
namespace binary {
namespace {

// Declarations of one instance that are cached for the next one. All further ones share the last slot.
const std::size_t maximumCached = 256;

CIMDataType::Type typeOf(UInt32 number) {
    if (number > CIMDataType::EMBEDDEDINSTANCE && number != CIMDataType::INVALID)
        OW_THROW(IOException, ("Received unknown data type " + std::to_string(number)).c_str());
    return static_cast<CIMDataType::Type>(number);
}

// Parses the URL of an object path, `scheme://host[:port][/file]`. Ignores any other text.
void splitUrl(std::string_view url, CIMObjectPath::Data& path) {
    const std::size_t scheme = url.find("://");
    if (scheme == std::string_view::npos)
        return;
    const auto copy = [](std::string_view text) { return String(text.data(), text.size()); };
    path.protocol = copy(url.substr(0, scheme));
    url.remove_prefix(scheme + 3);
    url = url.substr(0, url.find('/'));
    const std::size_t port = url.rfind(':');
    path.host = copy(url.substr(0, port));
    if (port != std::string_view::npos)
        path.port = copy(url.substr(port + 1));
}

// Whether an instance has a class and nothing else.
bool isEmpty(const CIMInstance::Data& data) {
    return data.keys.empty() && data.properties.empty() && data.qualifiers.empty() && data.language.empty();
}

} // namespace

// Counts the nesting depth. Throws IOException beyond the limit.
class ObjectReader::Nesting {
public:
    explicit Nesting(unsigned& depth)
        : m_depth(depth) {
        if (m_depth == io::maximumDepth)
            OW_THROW(IOException, "Failed reading data: objects are nested too deeply");
        ++m_depth;
    }
    ~Nesting() { --m_depth; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

private:
    unsigned& m_depth;
};

CIMValue ObjectReader::optionalValue() {
    return m_in.boolean() ? value() : CIMValue(CIMNULL);
}

CIMInstance ObjectReader::instance() {
    if (m_depth == 0)
        m_next = 0;
    const Nesting nesting(m_depth);
    const UInt8 signature = m_in.peek();
    const UInt32 received = version(sig::instance, sig::versionedInstance, highestInstanceVersion);
    auto* const data = new CIMInstance::Data;
    const CIMInstance instance = ObjectAccess::object<CIMInstance>(data);
    const std::string_view className = m_in.text();
    if (className != std::string_view(m_className.toString().c_str(), m_className.toString().length()))
        m_className = String(className.data(), className.size());
    data->className = m_className;
    data->keys = properties();
    data->properties = properties();
    data->qualifiers = qualifiers();
    if (signature == sig::versionedInstance)
        data->language = m_in.string();
    if (received >= 2)
        m_in.text(); // namespace
    return isEmpty(*data) ? sharedEmpty(instance) : instance;
}

// Empty instances share one object; only a hostile peer sends many.
CIMInstance ObjectReader::sharedEmpty(const CIMInstance& instance) {
    if (!m_empty || m_empty.getClassName().compareTo(instance.getClassName()) != 0)
        m_empty = instance;
    return m_empty;
}

CIMObjectPath ObjectReader::objectPath() {
    const Nesting nesting(m_depth);
    auto* const data = new CIMObjectPath::Data;
    CIMObjectPath path = ObjectAccess::object<CIMObjectPath>(data);
    m_in.expect(sig::objectPath);
    m_in.expect(sig::nameSpace);
    data->nameSpace = m_in.string();
    m_in.expect(sig::url);
    splitUrl(m_in.text(), *data);
    data->className = name();
    data->keys = properties();
    return path;
}

CIMClass ObjectReader::classObject() {
    const Nesting nesting(m_depth);
    const UInt32 received = version(sig::classObject, sig::versionedClass, highestClassVersion);
    auto* const data = new CIMClass::Data;
    CIMClass object = ObjectAccess::object<CIMClass>(data);
    data->name = name();
    data->superClass = name();
    data->isAssociation = m_in.boolean();
    data->isKeyed = m_in.boolean();
    data->qualifiers = qualifiers();
    data->properties = properties();
    data->methods = array<Method>([this] { return method(); });
    if (received == 1)
        m_in.text(); // language
    return object;
}

CIMPropertyArray ObjectReader::properties() {
    return array<CIMProperty>([this] { return property(); });
}

CIMProperty ObjectReader::property() {
    detail::Shared<Declaration> shared = declaration();
    return ObjectAccess::property(std::move(shared), optionalValue());
}

detail::Shared<Declaration> ObjectReader::declaration() {
    if (m_depth > 1)
        return newDeclaration();
    const std::size_t index = std::min(m_next++, maximumCached - 1);
    if (index == m_cached.size())
        m_cached.emplace_back();
    Cached& cached = m_cached[index];
    if (cached.declaration && m_in.skip(cached.bytes))
        return cached.declaration;
    m_in.beginSlice();
    cached.declaration = newDeclaration();
    cached.bytes = m_in.endSlice();
    return cached.declaration;
}

detail::Shared<Declaration> ObjectReader::newDeclaration() {
    auto* const data = new Declaration;
    detail::Shared<Declaration> shared(data);
    m_in.expect(sig::property);
    data->name = name();
    data->overridden = name();
    data->originClass = name();
    data->type = dataType();
    data->arraySize = static_cast<Int32>(m_in.number());
    data->propagated = m_in.boolean();
    data->qualifiers = qualifiers();
    return shared;
}

CIMDataType ObjectReader::dataType() {
    m_in.expect(sig::dataType);
    const CIMDataType::Type type = typeOf(m_in.number());
    const Int32 size = static_cast<Int32>(m_in.number());
    const Int32 sizeRange = static_cast<Int32>(m_in.number());
    return ObjectAccess::dataType(type, size, sizeRange, m_in.string());
}

QualifierArray ObjectReader::qualifiers() {
    return array<Qualifier>([this] { return qualifier(); });
}

Qualifier ObjectReader::qualifier() {
    const UInt8 signature = m_in.peek();
    version(sig::qualifier, sig::versionedQualifier, qualifierVersion);
    Qualifier qualifier;
    qualifier.name = name();
    qualifier.value = optionalValue();
    m_in.expect(sig::qualifierType);
    qualifier.typeName = name();
    qualifier.type = dataType();
    qualifier.scopes = numbers();
    qualifier.typeFlavors = numbers();
    qualifier.defaultValue = optionalValue();
    qualifier.propagated = m_in.boolean();
    qualifier.flavors = numbers();
    if (signature == sig::versionedQualifier)
        qualifier.language = m_in.string();
    return qualifier;
}

Method ObjectReader::method() {
    Method method;
    m_in.expect(sig::method);
    method.name = name();
    method.returnType = dataType();
    method.qualifiers = qualifiers();
    method.parameters = array<Parameter>([this] { return parameter(); });
    method.originClass = name();
    method.overridden = name();
    method.propagated = m_in.boolean();
    return method;
}

Parameter ObjectReader::parameter() {
    Parameter parameter;
    m_in.expect(sig::parameter);
    parameter.name = name();
    parameter.type = dataType();
    parameter.qualifiers = qualifiers();
    return parameter;
}

Int32Array ObjectReader::numbers() {
    return array<Int32>([this] { return static_cast<Int32>(m_in.number()); });
}

UInt32 ObjectReader::version(UInt8 unversioned, UInt8 versioned, UInt32 highest) {
    const UInt8 got = m_in.u8();
    if (got == unversioned)
        return 0;
    if (got != versioned) {
        const std::string message =
            std::string("Signature does not match. In CIMBase::readSig. signature read: ") +
            static_cast<char>(got) + ", expected: " + static_cast<char>(unversioned) + " or " +
            static_cast<char>(versioned);
        OW_THROW_ERR(BadCIMSignatureException, message.c_str(), 0);
    }
    const UInt32 number = m_in.number();
    if (number > highest) {
        const std::string message = "CIMBase::readSig. Unknown version " + std::to_string(number) +
                                    ", only versions <= " + std::to_string(highest) + " are handled.";
        OW_THROW_ERR(BadCIMSignatureException, message.c_str(), 1);
    }
    return number;
}

} // namespace binary
} // namespace OpenWBEM
