#ifndef TESTS_CIMOM_CLIENT_READING_HPP
#define TESTS_CIMOM_CLIENT_READING_HPP
#include "protocol/Handler.hpp"

#include <string>
#include <string_view>

// Read the whole body of a handler's reply by what the client library reads replies with. Throw
// std::logic_error when that makes anything else of it than the handler means: another error, none, or no
// sense.

void readAsBinaryClient(const cimom::OperationReply& reply);
/** @param request the document that is answered. When no client writes its message ID, or the name of its
 * operation, the reply is left alone. */
void readAsXmlClient(const cimom::OperationReply& reply, std::string_view request);

#endif
