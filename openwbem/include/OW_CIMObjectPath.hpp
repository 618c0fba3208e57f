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

    String getClassName() const;
    /** Without leading slashes. */
    String getNameSpace() const;
    String getHost() const;
    CIMPropertyArray getKeys() const;
    CIMObjectPath& setKeys(const CIMPropertyArray& keys);
    CIMObjectPath& setNameSpace(const String& nameSpace);
    CIMObjectPath& setHost(const String& host);

    void setNull() override;
    /** `/<namespace>:<modelPath>`, preceded by `<protocol>://<host>[:<port>]` for a host other than the local
     * one. */
    String toString() const override;
    /** `<class>.<key>="<value>",...`: every value quoted and escaped. */
    String modelPath() const;
    /** The text with backslashes, double quotes and line feeds escaped by a backslash. */
    static String escape(const String& text);

    operator detail::SafeBool() const { return detail::safeBool(static_cast<bool>(m_data)); }
    bool operator!() const { return !m_data; }

private:
    friend struct ObjectAccess;
    detail::Shared<Data> m_data;
};

} // namespace OpenWBEM
#endif
