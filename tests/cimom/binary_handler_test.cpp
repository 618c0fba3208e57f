#include "Client.hpp"
#include "LampProvider.hpp"
#include "protocol/BinaryHandler.hpp"
#include "support/Wire.hpp"

#include <gtest/gtest.h>

using namespace cimom;
using support::wire::bigEndian;
using support::wire::text;

namespace {

OperationReply replyTo(const std::string& request) {
    const ObjectManager manager = lampManager({"red", "green"});
    return BinaryHandler(manager).handle(request);
}

std::string error(const OperationReply& reply) {
    return reply.error ? std::to_string(reply.error->code) + " " + reply.error->description : "no error";
}

/** The body that stands for a CIM error. */
std::string exceptionBody(unsigned code, const std::string& message) {
    return '\2' + bigEndian(code, 2) + text(message);
}

} // namespace

TEST(BinaryHandler, AnEnumerationHoldsTheInstancesOfTheClass) {
    const OperationReply reply = replyTo(enumerateBody("QAV_Lamp"));
    EXPECT_EQ("no error", error(reply));
    const std::vector<OpenWBEM::CIMInstance> found = instancesIn(reply.body);
    ASSERT_EQ(2u, found.size());
    EXPECT_EQ("QAV_Lamp", found[0].getClassName());
    EXPECT_EQ("red", found[0].getPropertyValue("Colour").toString());
    EXPECT_EQ("green", found[1].getPropertyValue("Colour").toString());
    EXPECT_EQ(1u, found[1].getKeyValuePairs().size());
}

TEST(BinaryHandler, AnEnumerationHoldsOnlyTheListedProperties) {
    const auto found =
        instancesIn(replyTo(enumerateBody("QAV_Lamp", std::vector<std::string>{"watts"})).body);
    ASSERT_EQ(2u, found.size());
    ASSERT_EQ(1u, found[0].getProperties().size());
    EXPECT_EQ("Watts", found[0].getProperties()[0].getName());
}

TEST(BinaryHandler, TheVersionBeforeIsUnderstoodAndOthersAreNot) {
    EXPECT_EQ("7 GetInstance", error(replyTo(operationBody(29, 3000007))));
    for (const unsigned version : {0u, 3000006u, 3000009u}) {
        const OperationReply reply = replyTo(operationBody(29, version));
        EXPECT_EQ("1 general error (Incompatible version)", error(reply)) << version;
        EXPECT_EQ(exceptionBody(1, "general error (Incompatible version)"), reply.body) << version;
    }
}

TEST(BinaryHandler, CIMErrorsAreToldInTheBodyToo) {
    const OperationReply reply = replyTo(enumerateBody("QAV_Nope"));
    EXPECT_EQ("5 /root/cimv2:QAV_Nope", error(reply));
    EXPECT_EQ(exceptionBody(5, "class does not exist (/root/cimv2:QAV_Nope)"), reply.body);
}

TEST(BinaryHandler, OtherOperationsAreNotSupportedByTheirNames) {
    EXPECT_EQ("7 DeleteClass", error(replyTo(operationBody(20))));
    EXPECT_EQ("7 EnumerateInstanceNames", error(replyTo(operationBody(26))));
    EXPECT_EQ("7 ModifyInstance", error(replyTo(operationBody(35))));
    EXPECT_EQ("7 GetServerFeatures", error(replyTo(operationBody(44))));
    EXPECT_EQ(exceptionBody(7, "requested operation is not supported (GetInstance)"),
              replyTo(operationBody(29)).body);
}

TEST(BinaryHandler, AnOperationWithoutANameIsAnsweredByNothing) {
    for (const unsigned operation : {0u, 12u, 19u, 45u, 255u}) {
        const OperationReply reply = replyTo(operationBody(operation));
        EXPECT_EQ("no error", error(reply)) << operation;
        EXPECT_EQ("", reply.body) << operation;
    }
}

TEST(BinaryHandler, ARequestThatIsCutShortAnywhereIsAnError) {
    const std::string whole = enumerateBody("QAV_Lamp", std::vector<std::string>{"Watts", "Colour"});
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const OperationReply reply = replyTo(whole.substr(0, size));
        EXPECT_EQ("1 Failed reading data", error(reply)) << size;
        EXPECT_EQ('\1' + text("Failed reading data"), reply.body) << size;
    }
}

TEST(BinaryHandler, AnArgumentOfAnotherKindIsAnError) {
    std::string request = enumerateBody("QAV_Lamp");
    request[5] = 'k';
    EXPECT_EQ("1 Received invalid signature. Got: 107 Expected: 106", error(replyTo(request)));
}

TEST(BinaryHandler, ALengthBeyondTheRequestIsAnError) {
    const std::string head = operationBody(25);
    EXPECT_EQ("1 Failed reading data", error(replyTo(head + 'j' + "\x84\x7f\xff\xff\xff")));
    EXPECT_EQ("1 Failed reading data: length length is too large",
              error(replyTo(head + 'j' + "\x85\x01\x01\x01\x01\x01")));
}

TEST(BinaryHandler, BytesAfterTheArgumentsAreIgnored) {
    EXPECT_EQ("no error", error(replyTo(enumerateBody("QAV_Lamp") + "more")));
}

TEST(BinaryHandler, AProviderThatFailsIsAnErrorWithItsReason) {
    const OperationReply reply = replyTo(enumerateBody("QAV_Broken"));
    EXPECT_EQ("1 the lamp is broken", error(reply));
    EXPECT_EQ('\1' + text("the lamp is broken"), reply.body);
}
