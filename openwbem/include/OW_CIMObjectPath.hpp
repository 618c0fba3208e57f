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

    /** An empty path on the local host; not a null handle. */
    CIMObjectPath();
    explicit CIMObjectPath(CIMNULL_t);
    explicit CIMObjectPath(const CIMName& className);
    explicit CIMObjectPath(const char* className);
    CIMObjectPath(const CIMName& className, const String& nameSpace);
    CIMObjectPath(const CIMName& className, const CIMPropertyArray& keys);
    /** Path of an instance: its class and its keys, see CIMInstance::getKeyValuePairs(). */
    CIMObjectPath(const String& nameSpace, const CIMInstance& instance);

    /**
     * Reads the path of an instance,
     * `[<protocol>://<host>[:<port>]/][<namespace>:]<class>.<key>=<value>,...`. The namespace ends at the
     * first colon, "root" stands for none. Values are strings, in double quotes or without; a backslash keeps
     * the meaning of the next character from it. A text of blanks gives a null path. CIMException
     * INVALID_PARAMETER when the class, the keys or a port are missing, NOT_FOUND for a key without '='.
     * Nothing else is refused: a key whose quotes or whose last escape do not end before the text is left
     * out.
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
    /** Takes the keys of an instance, see CIMInstance::getKeyValuePairs(). */
    CIMObjectPath& setKeys(const CIMInstance& instance);
    /** The key of this name, whatever the case of its letters; a null property when there is none. */
    CIMProperty getKey(const CIMName& name) const;
    /** The key of this name; NoSuchPropertyException when there is none. */
    CIMProperty getKeyT(const CIMName& name) const;
    /** The value of the key of this name; the null value when there is no such key. */
    CIMValue getKeyValue(const CIMName& name) const;
    /** Whether there is a key of this name and it has a value. */
    bool keyHasValue(const CIMName& name) const;
    /** Gives a key a value, see CIMProperty::setValue(), or appends a key. */
    CIMObjectPath& setKeyValue(const CIMName& name, const CIMValue& value);
    /** Whether there are no keys. */
    bool isClassPath() const;
    bool isInstancePath() const { return !isClassPath(); }

    /**
     * Whether both are null or name the same object: host, namespace, class and keys, in any order, are the
     * same. The case of class and keys does not matter, nor does the type of a key's value.
     */
    bool equals(const CIMObjectPath& other) const { return compare(other) == 0; }

    void setNull() override;
    /** `/<namespace>:<modelPath>`, preceded by `<protocol>://<host>[:<port>]` for a host other than the local
     * one. */
    String toString() const override;
    /** toString(), escaped. */
    String toMOF() const override;
    /** `<class>.<key>="<value>",...`: every value quoted and escaped. CIMException FAILED for a text of more
     * than 16 MiB, to which paths within paths can grow. */
    virtual String modelPath() const;
    /** The text with backslashes, double quotes and line feeds escaped by a backslash. */
    static String escape(const String& text);
    /** The text without the backslashes, but for those behind a backslash. */
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
