#ifndef TESTS_CIMOM_HOST_TREE_HPP
#define TESTS_CIMOM_HOST_TREE_HPP
#include "host/Host.hpp"
#include "providers/Provider.hpp"
#include "support/TempDir.hpp"

#include <boost/asio/io_context.hpp>
#include <string>
#include <vector>

/** The files of a fake host. */
class HostTree {
public:
    HostTree()
        : m_host(m_directory.path()) {}

    /** Writes a file at an absolute path of the host. */
    void write(const std::string& path, const std::string& content) const {
        m_directory.write(path.substr(1), content);
    }
    /** Sets when a file was last modified. */
    void setModificationTime(const std::string& path, long seconds, long nanoseconds) const;
    std::string realPath(const std::string& path) const { return m_directory.path() + path; }
    const cimom::Host& host() const { return m_host; }

private:
    support::TempDir m_directory;
    cimom::Host m_host;
};

/** Sets the time zone of the process for a scope, in the form of the variable TZ. */
class TimeZone {
public:
    explicit TimeZone(const char* zone);
    ~TimeZone();
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;
};

/** The loop that waits for programs of fake hosts. */
boost::asio::io_context& loop();

/** The provider of a class. */
cimom::Provider providerOf(const char* className, const cimom::Host& host);

/** All instances of a class. Waits for the answer of a program. */
std::vector<OpenWBEM::CIMInstance> allInstances(const cimom::Provider& provider);

/** The instance of a class that has one. */
OpenWBEM::CIMInstance onlyInstance(const cimom::Provider& provider);

/** The value of a property as text; "(null)", or "(missing)" if the instance does not have the property. */
std::string text(const OpenWBEM::CIMInstance& instance, const char* property);

/** The names of the properties in order, separated by blanks. */
std::string names(const OpenWBEM::CIMPropertyArray& properties);

#endif
