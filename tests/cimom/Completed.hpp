#ifndef TESTS_CIMOM_COMPLETED_HPP
#define TESTS_CIMOM_COMPLETED_HPP
#include "protocol/Handler.hpp"

/** A reply with its complete body. */
inline cimom::OperationReply completed(cimom::OperationReply reply) {
    while (reply.more && reply.more->appendNext(reply.body)) {
    }
    reply.more = nullptr;
    return reply;
}

#endif
