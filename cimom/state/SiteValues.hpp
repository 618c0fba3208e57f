#ifndef CIMOM_STATE_SITE_VALUES_HPP_INCLUDED
#define CIMOM_STATE_SITE_VALUES_HPP_INCLUDED
#include "state/StateFile.hpp"

#include <map>
#include <memory>
#include <optional>
#include <string>

namespace cimom {

/**
 * What the site has written: the values of properties of instances, each instance named by class and keys as
 * in `Class.Key="value",Key2="value2"`. They are kept whether the instance is there at the moment or not.
 */
class SiteValues {
public:
    /** Values by property, in UTF-8; none for a property that was written as null. */
    using Values = std::map<std::string, std::optional<std::string>>;

    /** Keeps the values in memory alone. */
    SiteValues() = default;
    /**
     * Keeps the values in a file, a JSON document, beginning with what it holds. Throws std::runtime_error
     * that says `<path>:<line>: <why>` when the file is not what was written here.
     */
    explicit SiteValues(std::unique_ptr<StateFile> file);

    /** What was written to an instance; null when nothing was. Valid until the next write. */
    const Values* find(const std::string& instance) const;
    /**
     * Adds or replaces values of an instance. When this returns, the file holds them. Throws what
     * StateFile::replace() throws; the values here are then the old ones.
     */
    void write(const std::string& instance, const Values& changes);

private:
    std::unique_ptr<StateFile> m_file; // null: memory alone
    std::map<std::string, Values> m_values;
};

} // namespace cimom
#endif
