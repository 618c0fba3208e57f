#include "site/SiteInstances.hpp"

#include "OW_CIMException.hpp"
#include "schema/Namespace.hpp"
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

/**
 * Instances by number, and their numbers by a hash of the path. Paths as map keys would double the memory.
 */
class SiteInstances::OfClass {
public:
    CIMInstance at(std::size_t number) const {
        return number < m_instances.size() ? m_instances[number] : CIMInstance(CIMNULL);
    }

    /** The number of the instance with a path in canonical form. */
    std::optional<std::size_t> find(const CIMObjectPath& path) const {
        const auto [begin, end] = m_numbers.equal_range(hash(path));
        for (auto candidate = begin; candidate != end; ++candidate) {
            if (pathOf(m_instances[candidate->second]) == path)
                return candidate->second;
        }
        return std::nullopt;
    }

    /** Appends an instance. No other one has its keys. */
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

/** Hands out the instances of a class. */
class FromFiles : public InstanceSource {
public:
    /** @param instances null for none */
    explicit FromFiles(std::shared_ptr<const SiteInstances::OfClass> instances)
        : m_instances(std::move(instances)) {}

    CIMInstance next() override { return m_instances ? m_instances->at(m_next++) : CIMInstance(CIMNULL); }

private:
    std::shared_ptr<const SiteInstances::OfClass> m_instances;
    std::size_t m_next = 0;
};

/** Makes the instances of one class. They share the declarations of their properties and the null properties.
 */
class Maker {
public:
    Maker(const ClassDeclaration& declaration, const ServedClasses& classes)
        : m_declaration(declaration)
        , m_classes(classes) {
        for (const PropertyDeclaration& declared : declaration.properties) {
            m_indexes[declared.name] = m_nulls.size();
            m_nulls.push_back(CIMProperty(CIMName(declared.name), declared.dataType()));
        }
    }

    CIMInstance make(const Value& object) const {
        CIMPropertyArray properties = m_nulls;
        std::set<std::size_t> given;
        for (const auto& [name, value] : object.members) {
            const std::size_t index = indexOf(name, value);
            if (!given.insert(index).second)
                throw json::Error(value.line, "duplicate name \"" + name + "\" (in another case)");
            const CIMValue converted = valueAt(index, value);
            if (converted)
                properties[index].setValue(converted);
        }
        CIMInstance instance(m_declaration.name);
        instance.setKeys(keysOf(properties, object));
        instance.setProperties(properties);
        return instance;
    }

private:
    std::size_t indexOf(const std::string& name, const Value& value) const {
        const auto found = m_indexes.find(name.c_str());
        if (found == m_indexes.end() || name.find('\0') != std::string::npos)
            throw json::Error(value.line,
                              std::string(m_declaration.name) + " has no property \"" + name + "\"");
        return found->second;
    }

    CIMValue valueAt(std::size_t index, const Value& value) const {
        const PropertyDeclaration& declared = m_declaration.properties[index];
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
    CIMPropertyArray m_nulls;                 // in the order of the declaration
    std::map<CIMName, std::size_t> m_indexes; // by name
};

/** Reads the instances of all files. */
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
        for (const auto& [name, read] : m_byClass)
            result[name] = read.instances;
        return result;
    }

private:
    /** The origin of an instance. */
    struct Position {
        std::size_t file; // index in m_files
        unsigned line;
    };
    /** The instances of a class that have been read so far. */
    struct ReadClass {
        std::shared_ptr<SiteInstances::OfClass> instances = std::make_shared<SiteInstances::OfClass>();
        std::vector<Position> positions; // by number of the instance
    };

    void readClass(const std::string& name, const Value& instances) {
        const ClassDeclaration* const declaration = m_classes.find(name.c_str());
        if (!declaration || name.find('\0') != std::string::npos)
            throw json::Error(instances.line, "unknown class \"" + name + "\"");
        if (instances.kind != Value::Kind::array)
            throw json::Error(instances.line, name + ": expected an array of instances");
        const Maker maker(*declaration, m_classes);
        ReadClass& all = m_byClass[declaration->name];
        for (const Value& object : instances.elements) {
            if (object.kind != Value::Kind::object)
                throw json::Error(object.line, name + ": expected an object of properties");
            add(maker.make(object), object.line, all);
        }
    }

    void add(const CIMInstance& instance, unsigned line, ReadClass& all) const {
        if (const std::optional<std::size_t> first = all.instances->find(pathOf(instance))) {
            const Position& position = all.positions[*first];
            throw json::Error(line, "duplicate instance, first one at " + m_files[position.file] + ":" +
                                        std::to_string(position.line));
        }
        all.instances->add(instance);
        all.positions.push_back({m_files.size() - 1, line});
    }

    const ServedClasses& m_classes;
    std::vector<std::string> m_files; // the last is the one being read
    std::map<std::string, ReadClass> m_byClass;
};

/** The paths of the files to read. */
std::set<std::string> filesIn(const std::string& directory) {
    namespace fs = std::filesystem;
    std::set<std::string> paths;
    std::error_code error;
    fs::directory_iterator entry(directory, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const fs::path& path = entry->path();
        std::error_code ignored; // reading the file reports it
        const bool isHidden = path.filename().string().front() == '.';
        if (path.extension() == ".json" && !isHidden && !entry->is_directory(ignored))
            paths.insert(path.string());
    }
    if (error)
        throw std::system_error(error, directory);
    return paths;
}

} // namespace

SiteInstances::SiteInstances(const std::string& directory,
                             const std::vector<const ClassDeclaration*>& classes)
    : m_classes(classes) {
    Reader reader(m_classes);
    for (const std::string& path : filesIn(directory))
        reader.read(path);
    m_byClass = reader.all();
    ::malloc_trim(0); // documents take more memory than their instances
}

std::unique_ptr<InstanceSource> SiteInstances::instances(const ClassDeclaration& declaration) const {
    const auto found = m_byClass.find(declaration.name);
    return std::make_unique<FromFiles>(found == m_byClass.end() ? nullptr : found->second);
}

CIMInstance SiteInstances::find(const CIMObjectPath& path) const {
    const ClassDeclaration* const declaration = m_classes.find(path.getClassName());
    const auto found = declaration ? m_byClass.find(declaration->name) : m_byClass.end();
    if (found == m_byClass.end())
        return CIMInstance(CIMNULL);
    try {
        const std::optional<std::size_t> number = found->second->find(m_classes.canonical(path));
        return number ? found->second->at(*number) : CIMInstance(CIMNULL);
    } catch (const CIMException&) { // a path that no file can hold
        return CIMInstance(CIMNULL);
    }
}

} // namespace cimom
