#ifndef TESTS_CIMOM_CLIENT_READING_HPP
#define TESTS_CIMOM_CLIENT_READING_HPP
#include "protocol/Handler.hpp"

#include <string>
#include <string_view>

// These functions read the whole body of a handler's reply with the decoders of the client library. They
// throw std::logic_error if the decoders cannot read it, or find another error than the reply contains.

void readAsBinaryClient(const cimom::OperationReply& reply);
/** Ignores the reply if no client would send this message ID or operation name.
 * @param request the document that the reply answers */
void readAsXmlClient(const cimom::OperationReply& reply, std::string_view request);

#endif
