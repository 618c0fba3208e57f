#ifndef CIMOM_OBJECTS_PROVIDER_HPP_INCLUDED
#define CIMOM_OBJECTS_PROVIDER_HPP_INCLUDED
#include "OW_CIMDataType.hpp"
#include "objects/InstanceSource.hpp"

#include <vector>

namespace cimom {

/** What a property is to its instance, and with that who decides its value. */
enum class Role {
    /** Tells how the host is at present; read-only. */
    state,
    /** Names the instance among those of its class; read-only. */
    key,
    /** Is the site's to write, and null until then. Of type string. */
    site
};

/** A property as its class declares it. */
struct PropertyDeclaration {
    const char* name;
    OpenWBEM::CIMDataType::Type type;
    Role role = Role::state;
    bool isArray = false;
    /** Of a reference, the class of the instances that it leads to. */
    const char* referenceClass = "";

    OpenWBEM::CIMDataType dataType() const;
};

/** A class: its name and its properties, in the order in which instances carry them. */
struct ClassDeclaration {
    const char* name;
    std::vector<PropertyDeclaration> properties;
};

/** Serves the instances of one class. */
class Provider {
public:
    virtual ~Provider() = default;

    /** The class; the same as long as the provider lives. */
    virtual const ClassDeclaration& declaration() const = 0;
    /**
     * All instances, as they are at this moment or when their turn comes, each with every declared property.
     * Throws AnswerPending when they are told by a program that has not answered yet.
     */
    virtual InstanceSource instances() const = 0;

protected:
    Provider() = default;
    Provider(const Provider&) = default;
    Provider& operator=(const Provider&) = default;
};

} // namespace cimom
#endif
