#ifndef CIMOM_SCHEMA_INSTANCE_SOURCE_HPP_INCLUDED
#define CIMOM_SCHEMA_INSTANCE_SOURCE_HPP_INCLUDED
#include "OW_CIMInstance.hpp"

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace cimom {

/**
 * Hands out objects, one a call. It makes an object when it is asked for it, so that the memory of a long
 * enumeration does not grow with the number of its objects.
 */
template <class Object>
class Source {
public:
    virtual ~Source() = default;

    /** The next object; the null object after the last one, and at every later call. */
    virtual Object next() = 0;

protected:
    Source() = default;
    Source(const Source&) = default;
    Source& operator=(const Source&) = default;
};

using InstanceSource = Source<OpenWBEM::CIMInstance>;

/** Makes an instance of each record of a list. */
template <class Record, class Make>
class EachOf : public InstanceSource {
public:
    EachOf(std::vector<Record> records, Make make)
        : m_records(std::move(records))
        , m_make(std::move(make)) {}

    OpenWBEM::CIMInstance next() override {
        return m_next < m_records.size() ? m_make(m_records[m_next++])
                                         : OpenWBEM::CIMInstance(OpenWBEM::CIMNULL);
    }

private:
    std::vector<Record> m_records;
    Make m_make;
    std::size_t m_next = 0;
};

/** A source that makes an instance of each record, in order. It owns the records. */
template <class Record, class Make>
std::unique_ptr<InstanceSource> eachOf(std::vector<Record> records, Make make) {
    return std::make_unique<EachOf<Record, Make>>(std::move(records), std::move(make));
}

/** A source of a single instance. */
inline std::unique_ptr<InstanceSource> only(const OpenWBEM::CIMInstance& instance) {
    return eachOf(std::vector<OpenWBEM::CIMInstance>{instance},
                  [](const OpenWBEM::CIMInstance& each) { return each; });
}

} // namespace cimom
#endif
