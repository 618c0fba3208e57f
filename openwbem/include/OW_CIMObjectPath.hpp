#ifndef OW_CIMOBJECT_PATH_HPP_INCLUDED
#define OW_CIMOBJECT_PATH_HPP_INCLUDED
#include "OW_CIMBase.hpp"
#include "OW_CIMFwd.hpp"
#include "OW_CIMNULL.hpp"
#include "OW_CIMName.hpp"
#include "detail/OW_Shared.hpp"

namespace OpenWBEM {

/** Path of a class or an instance: host, namespace, class and keys. Copies share the data; may be null. */
class OW_COMMON_API CIMObjectPath : public CIMBase {
public:
    struct Data;

    /** An empty path on the local host; not null. */
    CIMObjectPath();
    explicit CIMObjectPath(CIMNULL_t);
    explicit CIMObjectPath(const CIMName& className);
    explicit CIMObjectPath(const char* className);
    CIMObjectPath(const CIMName& className, const String& nameSpace);
    CIMObjectPath(const CIMName& className, const CIMPropertyArray& keys);
    /** The path of an instance: its class and its keys, see CIMInstance::getKeyValuePairs(). */
    CIMObjectPath(const String& nameSpace, const CIMInstance& instance);

    /**
     * Parses the path of an instance,
     * `[<protocol>://<host>[:<port>]/][<namespace>:]<class>.<key>=<value>,...`. The namespace ends at the
     * first colon; the default is "root". Values are strings, with or without double quotes; a backslash
     * escapes the next character. White space alone gives a null path. Throws CIMException INVALID_PARAMETER
     * for a missing class, missing keys or an invalid port, NOT_FOUND for a key without '='. Any other text
     * is accepted; a key with an unterminated quote or escape is ignored.
     */
    static CIMObjectPath parse(const String& text);

    String getClassName() const;
    CIMObjectPath& setClassName(const CIMName& className);
    /** Without leading slashes. */
    String getNameSpace() const;
    CIMObjectPath& setNameSpace(const String& nameSpace);
    String getHost() const;
    CIMObjectPath& setHost(const String& host);

    CIMPropertyArray getKeys() const;
    CIMObjectPath& setKeys(const CIMPropertyArray& keys);
    /** Copies the keys of an instance, see CIMInstance::getKeyValuePairs(). */
    CIMObjectPath& setKeys(const CIMInstance& instance);
    /** The key with this name, compared without case; a null property if there is none. */
    CIMProperty getKey(const CIMName& name) const;
    /** Like getKey(), but throws NoSuchPropertyException if there is none. */
    CIMProperty getKeyT(const CIMName& name) const;
    /** The value of the key with this name; the null value if there is none. */
    CIMValue getKeyValue(const CIMName& name) const;
    /** Whether the key with this name exists and has a value. */
    bool keyHasValue(const CIMName& name) const;
    /** Sets the value of a key, see CIMProperty::setValue(), or appends a key. */
    CIMObjectPath& setKeyValue(const CIMName& name, const CIMValue& value);
    /** Whether there are no keys. */
    bool isClassPath() const;
    bool isInstancePath() const { return !isClassPath(); }

    /**
     * Whether both are null, or host, namespace, class and keys are equal. Ignores the order of the keys, the
     * case of host, class and key names, and the types of the key values.
     */
    bool equals(const CIMObjectPath& other) const { return compare(other) == 0; }

    void setNull() override;
    /** `/<namespace>:<modelPath>`, preceded by `<protocol>://<host>[:<port>]` for a remote host. */
    String toString() const override;
    /** toString(), escaped. */
    String toMOF() const override;
    /** `<class>.<key>="<value>",...`, each value quoted and escaped. Throws CIMException FAILED if the text
     * exceeds 16 MiB, as deeply nested paths can. */
    virtual String modelPath() const;
    /** Escapes backslashes, double quotes and line feeds with a backslash. */
    static String escape(const String& text);
    /** Removes each backslash that is not itself escaped. */
    static String unEscape(const String& text);

    operator detail::SafeBool() const { return detail::safeBool(static_cast<bool>(m_data)); }
    bool operator!() const { return !m_data; }

    friend bool operator==(const CIMObjectPath& a, const CIMObjectPath& b) { return a.compare(b) == 0; }
    friend bool operator!=(const CIMObjectPath& a, const CIMObjectPath& b) { return a.compare(b) != 0; }
    /** An order for sorting. */
    friend bool operator<(const CIMObjectPath& a, const CIMObjectPath& b) { return a.compare(b) < 0; }

private:
    friend struct ObjectAccess;
    int compare(const CIMObjectPath& other) const;

    detail::Shared<Data> m_data;
};

} // namespace OpenWBEM
#endif
