#ifndef TESTS_OPENWBEM_RECORD_HPP
#define TESTS_OPENWBEM_RECORD_HPP
// Recorded conversations: what was asked, what went over the wire, and what the client understood.
#include "OW_CIMException.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMInstanceEnumeration.hpp"

#include <iosfwd>
#include <string>
#include <vector>

namespace record {

/** A recorded conversation, by its folder: its group and its name. */
struct Conversation {
    std::string folder;

    /** The words of the recorded command: program, URL, namespace, operation and its arguments. */
    std::vector<std::string> command() const;
    /** Everything that the client sent, and everything that it received. */
    std::string sent() const;
    std::string received() const;
    /** What the client understood. */
    std::string result() const;

private:
    std::string file(const char* name) const;
};

std::ostream& operator<<(std::ostream& out, const Conversation& conversation);

/** All conversations in the repository, in the order of their names. */
std::vector<Conversation> conversations();

/** HTTP replies that follow each other, one by one. */
std::vector<std::string> splitReplies(const std::string& bytes);
/** The body of an HTTP request, or of a chunked or plain reply, without its framing. */
std::string bodyOf(const std::string& message);

/** Print in the words of the record. */
void print(std::ostream& out, const OpenWBEM::CIMInstance& instance);
void print(std::ostream& out, OpenWBEM::CIMInstanceEnumeration instances);
/** Up to the code; the places in the source are not ours. */
void print(std::ostream& out, const OpenWBEM::Exception& e);

} // namespace record
#endif
