#ifndef TESTS_OPENWBEM_RECORD_HPP
#define TESTS_OPENWBEM_RECORD_HPP
// Recorded conversations: command, bytes sent and received, and the result of the client.
#include "OW_CIMException.hpp"
#include "OW_CIMInstance.hpp"
#include "OW_CIMInstanceEnumeration.hpp"

#include <iosfwd>
#include <string>
#include <vector>

namespace record {

/** A recorded conversation, given by its directory: group and name. */
struct Conversation {
    std::string directory;

    /** The arguments of the recorded command: program, URL, namespace, operation and its arguments. */
    std::vector<std::string> command() const;
    /** All bytes that the client sent and received. */
    std::string sent() const;
    std::string received() const;
    /** The recorded output of the client. */
    std::string result() const;

private:
    std::string file(const char* name) const;
};

std::ostream& operator<<(std::ostream& out, const Conversation& conversation);

/** All conversations in the repository, sorted by name. */
std::vector<Conversation> conversations();

/** Splits consecutive HTTP replies. */
std::vector<std::string> splitReplies(const std::string& bytes);
/** The body of an HTTP message, chunked or not, without its framing. */
std::string bodyOf(const std::string& message);

/** Print in the form of the recording. */
void print(std::ostream& out, const OpenWBEM::CIMInstance& instance);
void print(std::ostream& out, OpenWBEM::CIMInstanceEnumeration instances);
/** Prints type, message and code, without the source location. */
void print(std::ostream& out, const OpenWBEM::Exception& e);

} // namespace record
#endif
