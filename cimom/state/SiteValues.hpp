#ifndef CIMOM_STATE_SITE_VALUES_HPP_INCLUDED
#define CIMOM_STATE_SITE_VALUES_HPP_INCLUDED
#include "state/StateFile.hpp"

#include <map>
#include <memory>
#include <optional>
#include <string>

namespace cimom {

/**
 * The values that clients have written to properties of instances. Class and keys name an instance, as in
 * `Class.Key="value",Key2="value2"`. The values are kept while the instance does not exist, too.
 */
class SiteValues {
public:
    /** Values by property, in UTF-8; nothing for a property that was set to null. */
    using Values = std::map<std::string, std::optional<std::string>>;

    /** Keeps the values in memory only. */
    SiteValues() = default;
    /**
     * Keeps the values in a file, a JSON document, and reads those that it has. Throws std::runtime_error
     * `<path>:<line>: <why>` if the file has another form.
     */
    explicit SiteValues(std::unique_ptr<StateFile> file);

    /** The values of an instance; null if it has none. Valid until the next write. */
    const Values* find(const std::string& instance) const;
    /**
     * Adds or replaces values of an instance. When this returns, they are on the disk. Throws what
     * StateFile::replace() throws; the values in memory are then the old ones.
     */
    void write(const std::string& instance, const Values& changes);

private:
    std::unique_ptr<StateFile> m_file; // null: memory only
    std::map<std::string, Values> m_values;
};

} // namespace cimom
#endif
