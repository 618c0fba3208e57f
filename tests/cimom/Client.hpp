#ifndef TESTS_CIMOM_CLIENT_HPP
#define TESTS_CIMOM_CLIENT_HPP
#include "OW_CIMInstance.hpp"
#include "support/HttpClient.hpp"

#include <string>
#include <vector>

using Client = support::HttpClient;
using Reply = support::HttpReply;

/** The body of a request to enumerate all properties of the instances of a class. */
std::string enumerateBody(const std::string& className, const std::string& nameSpace = "root/cimv2");
/** The same for the listed properties. */
std::string enumerateBody(const std::string& className, const std::vector<std::string>& properties);
/** The body of a request in the given version for an operation whose only argument is the namespace. */
std::string operationBody(unsigned operation, unsigned version = 3000008);

/** A request of a client that accepts trailers. `lines` are further header lines, each with its line end. */
std::string httpRequest(const std::string& body, const std::string& lines = "TE: trailers\r\n",
                        const std::string& method = "M-POST");

/** A request in CIM-XML for an operation. The arguments are IPARAMVALUE elements. */
std::string xmlRequest(const std::string& operation, const std::string& arguments,
                       const std::string& lines = "");

/** The instances in the body of a reply to an enumeration; throws IOException for any other body. */
std::vector<OpenWBEM::CIMInstance> instancesIn(const std::string& body);

#endif
