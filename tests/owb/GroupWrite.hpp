#ifndef TESTS_OWB_GROUP_WRITE_HPP
#define TESTS_OWB_GROUP_WRITE_HPP
#include "Agent.hpp"
#include "support/Wire.hpp"

#include <string>
#include <vector>

/** A successful answer to a request to modify an instance. */
inline support::Step done() {
    return support::Step::answer(support::wire::plainReply(std::string(1, '\0')));
}

/** A successful answer to an enumeration. */
inline support::Step instances(const std::vector<std::string>& all) {
    return support::Step::answer(support::wire::chunkedReply(support::wire::enumeration(all)));
}

/** An agent that writes groups. */
class GroupWrite : public Agent {
public:
    using Agent::Agent;

    /** Its object manager has instances of one class and accepts every modification. */
    explicit GroupWrite(const std::vector<std::string>& all)
        : Agent({instances(all), done()}) {}

    Lines traced() const { return tracedBy("OWB_setGroup"); }
};

// An agent that writes group 0.

const char chassisClass[] = "QAV_K70Chassis";
const std::string creationClass = support::wire::stringProperty("CreationClassName", "C");

inline long add(TestQueue& q, long group, long nom, long row, const std::string& text) {
    return OWB_itemAdd(q.head(), group, nom, row, 0, text.c_str());
}

/** An instance of the class of group 0. */
inline std::string chassis(const std::string& tag) {
    return support::wire::instance(chassisClass, {support::wire::stringProperty("Tag", tag), creationClass,
                                                  support::wire::stringProperty("Model", "old")});
}

/** The request that writes properties of such an instance. */
inline std::string chassisWrite(const std::string& tag, const std::vector<std::string>& values) {
    std::vector<std::string> all = {support::wire::stringProperty("Tag", tag), creationClass};
    all.insert(all.end(), values.begin(), values.end());
    return support::wire::modifyRequest(support::wire::instance(chassisClass, all));
}

/** The request that writes the model of such an instance. */
inline std::string modelWrite(const std::string& tag, const std::string& model) {
    return chassisWrite(tag, {support::wire::stringProperty("Model", model)});
}

/** The requests of a write of group 0: the enumeration and these. */
inline Requests chassisRequests(const Requests& writes) {
    Requests all = {support::wire::enumerateRequest(chassisClass)};
    all.insert(all.end(), writes.begin(), writes.end());
    return all;
}

#endif
