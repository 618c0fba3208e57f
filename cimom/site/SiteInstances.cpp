#include "site/SiteInstances.hpp"

#include "OW_CIMException.hpp"
#include "objects/Naming.hpp"
#include "site/JsonValues.hpp"
#include "system/RegularFile.hpp"
#include "json/Document.hpp"

#include <cerrno>
#include <filesystem>
#include <functional>
#include <malloc.h>
#include <optional>
#include <set>
#include <stdexcept>
#include <system_error>
#include <unordered_map>

namespace cimom {

using namespace OpenWBEM;
using json::Value;

/** Instances by number, and their numbers by their keys: the paths themselves would take as much again. */
class SiteInstances::OfClass {
public:
    CIMInstance at(std::size_t number) const {
        return number < m_instances.size() ? m_instances[number] : CIMInstance(CIMNULL);
    }

    /** The number of the instance with the keys of a path in its one spelling. */
    std::optional<std::size_t> find(const CIMObjectPath& path) const {
        const auto [begin, end] = m_numbers.equal_range(hash(path));
        for (auto candidate = begin; candidate != end; ++candidate) {
            if (pathOf(m_instances[candidate->second]) == path)
                return candidate->second;
        }
        return std::nullopt;
    }

    /** Appends an instance whose keys no other has. */
    void add(const CIMInstance& instance) {
        m_numbers.emplace(hash(pathOf(instance)), m_instances.size());
        m_instances.push_back(instance);
    }

private:
    static std::size_t hash(const CIMObjectPath& path) {
        return std::hash<std::string>()(path.modelPath().c_str());
    }

    std::vector<CIMInstance> m_instances;
    std::unordered_multimap<std::size_t, std::size_t> m_numbers; // by hash of the path
};

namespace {

/** Makes the instances of one class, which share their declarations and their null properties. */
class Maker {
public:
    Maker(const ClassDeclaration& declaration, const ServedClasses& classes)
        : m_declaration(declaration)
        , m_classes(classes) {
        for (const PropertyDeclaration& declared : declaration.properties) {
            m_positions[declared.name] = m_nulls.size();
            m_nulls.push_back(CIMProperty(CIMName(declared.name), declared.dataType()));
        }
    }

    CIMInstance make(const Value& object) const {
        CIMPropertyArray properties = m_nulls;
        std::set<std::size_t> given;
        for (const auto& [name, value] : object.members) {
            const std::size_t position = positionOf(name, value);
            if (!given.insert(position).second)
                throw json::Error(value.line, "\"" + name + "\" comes twice, in another case");
            const CIMValue converted = valueAt(position, value);
            if (converted)
                properties[position].setValue(converted);
        }
        CIMInstance instance(m_declaration.name);
        instance.setKeys(keysOf(properties, object));
        instance.setProperties(properties);
        return instance;
    }

private:
    std::size_t positionOf(const std::string& name, const Value& value) const {
        const auto found = m_positions.find(name.c_str());
        if (found == m_positions.end() || name.find('\0') != std::string::npos)
            throw json::Error(value.line,
                              std::string(m_declaration.name) + " has no property \"" + name + "\"");
        return found->second;
    }

    CIMValue valueAt(std::size_t position, const Value& value) const {
        const PropertyDeclaration& declared = m_declaration.properties[position];
        try {
            return valueOf(value, declared, m_classes);
        } catch (const json::Error& e) {
            throw json::Error(e.line(), std::string(declared.name) + ": " + e.what());
        }
    }

    CIMPropertyArray keysOf(const CIMPropertyArray& properties, const Value& object) const {
        CIMPropertyArray keys;
        for (std::size_t i = 0; i < properties.size(); ++i) {
            const PropertyDeclaration& declared = m_declaration.properties[i];
            if (declared.role != Role::key)
                continue;
            if (!properties[i].getValue())
                throw json::Error(object.line, std::string("key \"") + declared.name + "\" has no value");
            keys.push_back(properties[i]);
        }
        return keys;
    }

    const ClassDeclaration& m_declaration;
    const ServedClasses& m_classes;
    CIMPropertyArray m_nulls;                   // in the order of the declaration
    std::map<CIMName, std::size_t> m_positions; // by name
};

/** Reads files into classes. */
class Reader {
public:
    explicit Reader(const ServedClasses& classes)
        : m_classes(classes) {}

    void read(const std::string& path) {
        m_files.push_back(path);
        const std::optional<RegularFile> file = readRegularFile(path);
        if (!file)
            throw std::system_error(ENOENT, std::generic_category(), path);
        try {
            const Value root = json::parse(file->content);
            if (root.kind != Value::Kind::object)
                throw json::Error(root.line, "expected an object of classes");
            for (const auto& [name, instances] : root.members)
                readClass(name, instances);
        } catch (const json::Error& e) {
            throw std::runtime_error(path + ":" + std::to_string(e.line()) + ": " + e.what());
        }
    }

    std::map<std::string, std::shared_ptr<const SiteInstances::OfClass>> all() const {
        std::map<std::string, std::shared_ptr<const SiteInstances::OfClass>> result;
        for (const auto& [name, filled] : m_filled)
            result[name] = filled.instances;
        return result;
    }

private:
    /** Where an instance was read. */
    struct Place {
        std::size_t file;
        unsigned line;
    };
    /** A class while it is filled. */
    struct Filled {
        std::shared_ptr<SiteInstances::OfClass> instances = std::make_shared<SiteInstances::OfClass>();
        std::vector<Place> places; // by number
    };

    void readClass(const std::string& name, const Value& instances) {
        const ClassDeclaration* const declaration = m_classes.find(name.c_str());
        if (!declaration || name.find('\0') != std::string::npos)
            throw json::Error(instances.line, "there is no class \"" + name + "\"");
        if (instances.kind != Value::Kind::array)
            throw json::Error(instances.line, name + ": expected an array of instances");
        const Maker maker(*declaration, m_classes);
        Filled& filled = m_filled[declaration->name];
        for (const Value& object : instances.elements) {
            if (object.kind != Value::Kind::object)
                throw json::Error(object.line, name + ": expected an object of properties");
            add(maker.make(object), object.line, filled);
        }
    }

    void add(const CIMInstance& instance, unsigned line, Filled& filled) const {
        if (const std::optional<std::size_t> first = filled.instances->find(pathOf(instance))) {
            const Place& place = filled.places[*first];
            throw json::Error(line, "an instance with the same keys is in " + m_files[place.file] + ":" +
                                        std::to_string(place.line));
        }
        filled.instances->add(instance);
        filled.places.push_back({m_files.size() - 1, line});
    }

    const ServedClasses& m_classes;
    std::vector<std::string> m_files; // the last is the one being read
    std::map<std::string, Filled> m_filled;
};

/** Paths of the files of a folder, in their order. */
std::set<std::string> filesOf(const std::string& folder) {
    namespace fs = std::filesystem;
    std::set<std::string> paths;
    std::error_code error;
    fs::directory_iterator entry(folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const fs::path& path = entry->path();
        std::error_code ignored; // reading it will tell
        const bool isHidden = path.filename().string().front() == '.';
        if (path.extension() == ".json" && !isHidden && !entry->is_directory(ignored))
            paths.insert(path.string());
    }
    if (error)
        throw std::system_error(error, folder);
    return paths;
}

} // namespace

SiteInstances::SiteInstances(const std::string& folder, const std::vector<const ClassDeclaration*>& classes)
    : m_classes(classes) {
    Reader reader(m_classes);
    for (const std::string& path : filesOf(folder))
        reader.read(path);
    m_byClass = reader.all();
    ::malloc_trim(0); // a document takes more memory than its instances
}

InstanceSource SiteInstances::instances(const ClassDeclaration& declaration) const {
    const auto found = m_byClass.find(declaration.name);
    if (found == m_byClass.end())
        return [] { return CIMInstance(CIMNULL); };
    return [all = found->second, next = std::size_t{0}]() mutable { return all->at(next++); };
}

CIMInstance SiteInstances::find(const CIMObjectPath& path) const {
    const ClassDeclaration* const declaration = m_classes.find(path.getClassName());
    const auto found = declaration ? m_byClass.find(declaration->name) : m_byClass.end();
    if (found == m_byClass.end())
        return CIMInstance(CIMNULL);
    try {
        const std::optional<std::size_t> number = found->second->find(m_classes.canonical(path));
        return number ? found->second->at(*number) : CIMInstance(CIMNULL);
    } catch (const CIMException&) { // what the files cannot have named either
        return CIMInstance(CIMNULL);
    }
}

} // namespace cimom
