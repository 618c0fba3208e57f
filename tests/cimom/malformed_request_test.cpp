// Recorded requests that are truncated or mutated. Each gets a reply, an error response or a closed
// connection, and needs little memory. An incomplete request changes nothing.
#include "ClientReading.hpp"
#include "Collected.hpp"
#include "Completed.hpp"
#include "MutatedRequests.hpp"
#include "RecordedSchema.hpp"
#include "SessionRun.hpp"
#include "openwbem/Memory.hpp"
#include "openwbem/Record.hpp"
#include "schema/Namespace.hpp"
#include "support/Child.hpp"
#include "support/TempDir.hpp"

#include <algorithm>
#include <boost/asio/buffer.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>
#include <gtest/gtest.h>
#include <set>

using namespace cimom;
using namespace OpenWBEM;
namespace beast = boost::beast;

namespace {

std::set<std::string> recordedBodies(bool isXml) {
    std::set<std::string> bodies;
    for (const std::string& request : recordedRequests()) {
        const std::string body = record::bodyOf(request);
        if ((body[0] == '<') == isXml)
            bodies.insert(body);
    }
    return bodies;
}

/** All instances of the writable class, as one text. */
std::string written(const ObjectManager& manager) {
    std::string all;
    for (const CIMInstance& instance :
         collected(*manager.enumerateInstances(servedNamespace, "QAV_K70Chassis", nullptr)))
        all += instance.toString().c_str();
    return all;
}

/** `<status> <reason>: <CIMError>` of an error response, "<code>" of a CIM error, or "good". */
std::string outcomeOf(const Handler& handler, const std::string& body, Access access = Access::write) {
    try {
        const OperationReply reply = completed(handler.handle(body, access));
        if (dynamic_cast<const BinaryHandler*>(&handler))
            readAsBinaryClient(reply);
        else
            readAsXmlClient(reply, body);
        return reply.error ? std::to_string(reply.error->code) : "good";
    } catch (const UnreadableRequest& e) {
        return std::to_string(e.status()) + " " + e.reason() + ": " + e.what();
    }
}

/** The status of each reply in the bytes from a connection; a final 0 for bytes that are not a reply. */
std::vector<unsigned> statuses(const std::string& received) {
    std::vector<unsigned> all;
    for (std::size_t at = 0; at < received.size();) {
        beast::http::response_parser<beast::http::string_body> parser;
        parser.eager(true);
        parser.body_limit(boost::none);
        boost::system::error_code error;
        at += parser.put(boost::asio::buffer(received.data() + at, received.size() - at), error);
        if (!parser.is_done() && !parser.chunked() && !parser.content_length())
            parser.put_eof(error); // without a length, the end of the connection ends the body
        all.push_back(!error && parser.is_done() ? parser.get().result_int() : 0);
        if (error)
            break;
    }
    return all;
}

/** Enough for the bodies of a few requests only. */
const unsigned long fewMegabytes = 8UL << 20;

/** Runs a body with little memory. */
void inLittleMemory(const std::function<void()>& body) {
    const support::TempDir directory;
    support::inChild(directory.path(), [&] {
        limitMemory(fewMegabytes);
        body();
    });
}

} // namespace

TEST(MalformedRequests, AreMutatedFromManyRecordedOnes) {
    EXPECT_EQ(56u, recordedRequests().size());
    EXPECT_EQ(22u, recordedBodies(true).size());
    EXPECT_EQ(21u, recordedBodies(false).size());
}

TEST(MalformedRequests, ATruncatedBinaryBodyIsAnErrorAndChangesNothing) {
    ObjectManager objects = recordedManagerOfShortReplies();
    const BinaryHandler handler(objects);
    const std::string before = written(objects);
    for (const std::string& body : recordedBodies(false)) {
        for (std::size_t size = 0; size < body.size(); ++size)
            EXPECT_EQ("1", outcomeOf(handler, body.substr(0, size))) << size << " of " << body;
    }
    EXPECT_EQ(before, written(objects));
}

TEST(MalformedRequests, ATruncatedDocumentIsRefusedAndChangesNothing) {
    ObjectManager objects = recordedManagerOfShortReplies();
    const XmlHandler handler(objects);
    const std::string before = written(objects);
    for (const std::string& body : recordedBodies(true)) {
        for (std::size_t size = 0; size <= body.rfind('>'); ++size)
            EXPECT_EQ(0u, outcomeOf(handler, body.substr(0, size)).find("400 Bad request: request-not-"))
                << body.substr(0, size);
    }
    EXPECT_EQ(before, written(objects));
}

TEST(MalformedRequests, AMutatedBodyIsAnsweredOrRefused) {
    const std::set<std::string> expected = {"good",
                                            "1",
                                            "2",
                                            "3",
                                            "4",
                                            "5",
                                            "6",
                                            "7",
                                            "12",
                                            "13",
                                            "400 Bad request: request-not-loosely-valid",
                                            "400 Bad request: request-not-well-formed",
                                            "501 Not implemented: multiple-requests-unsupported",
                                            "501 Not implemented: unsupported-cim-version",
                                            "501 Not implemented: unsupported-dtd-version"};
    Dice dice;
    ObjectManager objects = recordedManagerOfShortReplies();
    const BinaryHandler binary(objects);
    const XmlHandler xml(objects);
    std::set<std::string> outcomes;
    for (const bool isXml : {false, true}) {
        const Handler& handler = isXml ? static_cast<const Handler&>(xml) : binary;
        for (const std::string& body : recordedBodies(isXml)) {
            for (int i = 0; i < 100; ++i) {
                const Access access = i % 2 == 0 ? Access::write : Access::read;
                const std::string outcome = outcomeOf(handler, mutated(body, dice), access);
                EXPECT_EQ(1u, expected.count(outcome)) << outcome;
                outcomes.insert(outcome);
            }
        }
    }
    EXPECT_LE(10u, outcomes.size()) << "the mutations have many outcomes";
}

TEST(MalformedRequests, AConnectionThatEndsInMidRequestGetsAnErrorResponseAndEnds) {
    ObjectManager objects = recordedManagerOfShortReplies();
    const std::string before = written(objects);
    inLittleMemory([&] {
        SessionRun session(objects);
        // Every third index, from a different first one in each request: the heads are nearly the same.
        std::size_t first = 1;
        for (const std::string& request : recordedRequests()) {
            for (std::size_t size = first; size < request.size(); size += 3)
                EXPECT_EQ(std::vector<unsigned>{400}, statuses(session.answerTo(request.substr(0, size))))
                    << request.substr(0, size);
            EXPECT_EQ(std::vector<unsigned>{200}, statuses(session.answerTo(request)));
            first = first % 3 + 1;
        }
        EXPECT_EQ("", session.answerTo(""));
    });
    EXPECT_EQ(before, written(objects));
}

TEST(MalformedRequests, AMutatedRequestIsAnsweredOrRefused) {
    const std::set<unsigned> expected = {200, 400, 405, 411, 413, 415, 431, 501, 505};
    ObjectManager objects = recordedManagerOfShortReplies();
    inLittleMemory([&] {
        Dice dice;
        SessionRun session(objects);
        std::set<unsigned> seen;
        for (const std::string& request : recordedRequests()) {
            for (int i = 0; i < 50; ++i) {
                const std::string received = session.answerTo(mutated(request, dice));
                for (const unsigned status : statuses(received)) {
                    EXPECT_EQ(1u, expected.count(status)) << received;
                    seen.insert(status);
                }
            }
        }
        EXPECT_LE(5u, seen.size()) << "the mutations have many outcomes";
    });
}
