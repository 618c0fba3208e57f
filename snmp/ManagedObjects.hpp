#ifndef SNMP_MANAGED_OBJECTS_HPP
#define SNMP_MANAGED_OBJECTS_HPP

#include "snmp/Objects.hpp"

#include <boost/asio/io_context.hpp>

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace snmp {

/** Ages from which values are read again when a manager asks for them. */
struct Ages {
    /** Counters, interfaces and all single objects. */
    std::chrono::seconds counters{3};
    /** Processes, connections, storage and physical parts. */
    std::chrono::seconds tables{15};
    /** Installed packages. */
    std::chrono::seconds packages{60};
    /** Age from which values that cannot be replaced are absent. Managers often ask every five minutes. */
    std::chrono::seconds longest{600};
};

struct ObjectSettings {
    /** URL of the object manager; empty for the library's default. */
    std::string url;
    Ages ages;
    /** Every set ends in Error::notWritable. */
    bool isReadOnly = false;
    /** Subtrees are single tables and instances, which win over those of a master in its default context. */
    bool registersTables = false;
    /** Receives the lines of the log. */
    std::function<void(const std::string&)> log;
};

/**
 * The objects of the standard MIBs, with the values of an object manager.
 *
 * A child process reads and writes through the library, so that nothing here waits for the object manager.
 * The constructor starts it and has it read all values once; construct the object before others that own
 * descriptors or memory that the child need not have. Throws std::system_error if there is no child.
 */
class ManagedObjects final : public Objects {
public:
    ManagedObjects(boost::asio::io_context& io, ObjectSettings settings);
    ~ManagedObjects() override;
    ManagedObjects(const ManagedObjects&) = delete;
    ManagedObjects& operator=(const ManagedObjects&) = delete;

    std::vector<Oid> subtrees() const override;
    std::vector<Module> modules() const override;
    void setUpTime(std::uint32_t hundredths) override;
    void prepare(const std::vector<Oid>& starts, std::function<void()> ready) override;
    Value get(const Oid& oid) override;
    VarBind next(const SearchRange& range) override;
    TestedSet test(const std::vector<VarBind>& values) override;

private:
    class State;
    std::shared_ptr<State> m_state;
};

} // namespace snmp
#endif
