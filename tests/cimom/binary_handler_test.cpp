#include "Client.hpp"
#include "Completed.hpp"
#include "LampProvider.hpp"
#include "OW_WBEMFlags.hpp"
#include "binary/ObjectReader.hpp"
#include "binary/Reader.hpp"
#include "binary/Request.hpp"
#include "protocol/BinaryHandler.hpp"
#include "support/Wire.hpp"
#include "types/ObjectData.hpp"

#include <gtest/gtest.h>

using namespace cimom;
using namespace OpenWBEM;
using binary::Reader;
using support::wire::bigEndian;
using support::wire::text;

namespace {

OperationReply replyTo(const std::string& request, Access access = Access::write) {
    ObjectManager manager = lampManager({"red", "green"});
    return completed(BinaryHandler(manager).handle(request, access));
}

std::string error(const OperationReply& reply) {
    return reply.error ? std::to_string(reply.error->code) + " " + reply.error->description : "no error";
}

CIMInstance paintedRed(const char* room) {
    CIMInstance lamp("QAV_Lamp");
    lamp.setProperty("Colour", CIMValue("red"));
    lamp.setProperty("Room", CIMValue(room));
    return lamp;
}

std::string getBody(const char* path, const StringArray* properties = nullptr) {
    ReadOptions options;
    options.properties = properties;
    return binary::getInstance("root/cimv2", CIMObjectPath::parse(path), options);
}

std::string modifyBody(const CIMInstance& instance, const StringArray* properties = nullptr) {
    return binary::modifyInstance("root/cimv2", instance, WBEMFlags::E_INCLUDE_QUALIFIERS, properties);
}

/** The body that reports a CIM error. */
std::string exceptionBody(unsigned code, const std::string& message) {
    return '\2' + bigEndian(code, 2) + text(message);
}

/** Flags as arguments of an operation. */
std::string flags(std::initializer_list<char> values) {
    std::string all;
    for (const char value : values)
        all += std::string("h") + value;
    return all;
}

/** A null list of properties. */
const std::string allProperties = "h\1";

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

TEST(BinaryHandler, InstanceNamesArePathsBetweenTheirMarks) {
    const OperationReply reply = replyTo(operationBody(26) + 'j' + text("QAV_Lamp"));
    EXPECT_EQ("no error", error(reply));
    binary::Reader in(reply.body.data(), reply.body.size());
    EXPECT_EQ(0, in.u8());
    in.expect('n');
    binary::ObjectReader objects(in);
    EXPECT_EQ("/root/cimv2:QAV_Lamp.Colour=\"red\"", objects.objectPath().toString());
    EXPECT_EQ("/root/cimv2:QAV_Lamp.Colour=\"green\"", objects.objectPath().toString());
    in.expect(0x97);
    in.expect(0x97);
    EXPECT_TRUE(in.atEnd());
}

TEST(BinaryHandler, AnInstanceIsTheOneThatThePathNames) {
    const OperationReply reply = replyTo(getBody("QAV_Lamp.Colour=\"green\""));
    EXPECT_EQ("no error", error(reply));
    binary::Reader in(reply.body.data(), reply.body.size());
    EXPECT_EQ(0, in.u8());
    const CIMInstance instance = binary::ObjectReader(in).instance();
    EXPECT_TRUE(in.atEnd());
    EXPECT_EQ("green", instance.getPropertyValue("Colour").toString());
    EXPECT_EQ(5u, instance.getProperties().size());
    EXPECT_EQ("6 /root/cimv2:QAV_Lamp.Colour=\"blue\"", error(replyTo(getBody("QAV_Lamp.Colour=\"blue\""))));
}

TEST(BinaryHandler, AnInstanceHoldsOnlyTheListedProperties) {
    StringArray listed;
    listed.push_back("watts");
    const OperationReply reply = replyTo(getBody("QAV_Lamp.Colour=\"green\"", &listed));
    binary::Reader in(reply.body.data() + 1, reply.body.size() - 1);
    EXPECT_EQ(1u, binary::ObjectReader(in).instance().getProperties().size());
}

TEST(BinaryHandler, PropertiesSayTheirClassWhenAsked) {
    const std::string head = operationBody(25) + 'j' + text("QAV_Lamp");
    const auto originIn = [&](char isWanted) {
        const auto found = instancesIn(replyTo(head + flags({1, 0, 0, isWanted}) + allProperties).body);
        return std::string(found.at(0).getProperty("Watts").getOriginClass().c_str());
    };
    EXPECT_EQ("QAV_Lamp", originIn(1));
    EXPECT_EQ("", originIn(0));
}

TEST(BinaryHandler, AClassIsItsDeclaration) {
    const OperationReply reply =
        replyTo(operationBody(28) + 'j' + text("qav_socket") + flags({0, 1, 1}) + allProperties);
    EXPECT_EQ("GetClass qav_socket", reply.title);
    Reader in(reply.body.data(), reply.body.size());
    in.expect(0);
    const CIMClass object = binary::ObjectReader(in).classObject();
    EXPECT_TRUE(in.atEnd());
    EXPECT_EQ("QAV_Socket", object.getName());
    ASSERT_EQ(3u, object.getAllProperties().size());
    EXPECT_EQ("QAV_Socket", ObjectAccess::declaration(object.getAllProperties()[0]).originClass);
    EXPECT_EQ(1u, ObjectAccess::declaration(object.getAllProperties()[0]).qualifiers.size());
}

TEST(BinaryHandler, AClassHasTheDetailsThatAreAskedFor) {
    const std::string name = 'j' + text("QAV_Socket");
    const std::string list = std::string("h\0k\1", 4) + text("LABEL");
    const OperationReply reply = replyTo(operationBody(28) + name + flags({1, 0, 0}) + list);
    // Neither a superclass nor an association, but with keys; no qualifiers, one property, no methods.
    const std::string property = "R" + text("Label") + std::string(2, '\0') +
                                 std::string("D\x09\x01\0\0", 5) +
                                 std::string("\x84\xFF\xFF\xFF\xFF\0\0\0", 8);
    EXPECT_EQ(std::string(1, '\0') + "C" + text("QAV_Socket") + std::string("\0\0\1\0\1", 5) + property +
                  '\0',
              reply.body);
}

TEST(BinaryHandler, ClassesStandBetweenTheirMarks) {
    const OperationReply reply = replyTo(operationBody(23) + 'j' + text("") + flags({1, 0, 0, 0}));
    Reader in(reply.body.data(), reply.body.size());
    in.expect(0);
    in.expect(0x69);
    binary::ObjectReader objects(in);
    std::string names;
    while (in.peek() != 0x96)
        names += objects.classObject().getName().c_str() + std::string(" ");
    EXPECT_EQ("QAV_Broken QAV_Lamp QAV_Socket ", names);
    EXPECT_EQ("\x96\x96", reply.body.substr(reply.body.size() - 2));
    EXPECT_EQ(std::string("\0i\x96\x96", 4),
              replyTo(operationBody(23) + 'j' + text("QAV_Lamp") + flags({0, 0, 1, 1})).body)
        << "it has no subclasses";
}

TEST(BinaryHandler, ClassNamesStandBetweenTheirMarks) {
    EXPECT_EQ(std::string("\0s", 2) + 'j' + text("QAV_Broken") + 'j' + text("QAV_Lamp") + 'j' +
                  text("QAV_Socket") + "\x9A\x9A",
              replyTo(operationBody(24) + 'j' + text("") + flags({0})).body);
}

TEST(BinaryHandler, APropertyIsItsValueOrNone) {
    const std::string path = getBody("QAV_Lamp.Colour=\"red\"");
    // The path is between the namespace of the request and the flags of GetInstance.
    const std::string begin = operationBody(29);
    const std::string object = path.substr(begin.size(), path.size() - begin.size() - 8);
    EXPECT_EQ(std::string("\0h\1V\3\0\0\x3C", 8),
              replyTo(operationBody(37) + object + 'j' + text("watts")).body);
    EXPECT_EQ(std::string("\0h\0", 3), replyTo(operationBody(37) + object + 'j' + text("LitSince")).body);
    EXPECT_EQ("12 Volts", error(replyTo(operationBody(37) + object + 'j' + text("Volts"))));
}

TEST(BinaryHandler, AModificationIsAnsweredByOneByte) {
    ObjectManager manager = lampManager({"red", "green"});
    const BinaryHandler handler(manager);
    const OperationReply reply = handler.handle(modifyBody(paintedRed("hall")), Access::write);
    EXPECT_EQ("no error", error(reply));
    EXPECT_EQ(std::string(1, '\0'), reply.body);
    const auto all = instancesIn(completed(handler.handle(enumerateBody("QAV_Lamp"), Access::read)).body);
    EXPECT_EQ("hall", all.at(0).getPropertyValue("Room").toString());

    StringArray none;
    EXPECT_EQ("no error", error(handler.handle(modifyBody(paintedRed("cellar"), &none), Access::write)));
    EXPECT_EQ("hall", instancesIn(completed(handler.handle(enumerateBody("QAV_Lamp"), Access::read)).body)
                          .at(0)
                          .getPropertyValue("Room")
                          .toString());
}

TEST(BinaryHandler, AModificationByWhoMayOnlyReadIsDenied) {
    const OperationReply reply = replyTo(modifyBody(paintedRed("hall")), Access::read);
    EXPECT_EQ("2 only root, the object manager's user and users not marked read-only may write",
              error(reply));
    EXPECT_EQ(exceptionBody(2, "Access to CIM resource unavailable to client (only root, the object "
                               "manager's user and users not marked read-only may write)"),
              reply.body);
}

TEST(BinaryHandler, TheVersionBeforeIsUnderstoodAndOthersAreNot) {
    EXPECT_EQ("7 DeleteClass", error(replyTo(operationBody(20, 3000007))));
    for (const unsigned version : {0u, 3000006u, 3000009u}) {
        const OperationReply reply = replyTo(operationBody(20, version));
        EXPECT_EQ("1 general error (Incompatible version)", error(reply)) << version;
        EXPECT_EQ('\1' + text("general error (Incompatible version)"), reply.body) << version;
    }
}

TEST(BinaryHandler, CIMErrorsAreToldInTheBodyToo) {
    const OperationReply reply = replyTo(enumerateBody("QAV_Nope"));
    EXPECT_EQ("5 /root/cimv2:QAV_Nope", error(reply));
    EXPECT_EQ(exceptionBody(5, "class does not exist (/root/cimv2:QAV_Nope)"), reply.body);
}

TEST(BinaryHandler, OtherOperationsAreNotSupportedByTheirNames) {
    EXPECT_EQ("7 DeleteClass", error(replyTo(operationBody(20))));
    EXPECT_EQ("7 CreateInstance", error(replyTo(operationBody(36))));
    EXPECT_EQ("7 GetServerFeatures", error(replyTo(operationBody(44))));
    EXPECT_EQ(exceptionBody(7, "requested operation is not supported (DeleteClass)"),
              replyTo(operationBody(20)).body);
}

TEST(BinaryHandler, AnOperationWithoutANameIsAnsweredByNothing) {
    for (const unsigned operation : {0u, 12u, 19u, 45u, 255u}) {
        const OperationReply reply = replyTo(operationBody(operation));
        EXPECT_EQ("no error", error(reply)) << operation;
        EXPECT_EQ("", reply.body) << operation;
    }
}

TEST(BinaryHandler, ARequestThatIsCutShortAnywhereIsAnError) {
    for (const std::string& whole : {enumerateBody("QAV_Lamp", std::vector<std::string>{"Watts", "Colour"}),
                                     operationBody(26) + 'j' + text("QAV_Lamp"),
                                     getBody("QAV_Lamp.Colour=\"red\""), modifyBody(paintedRed("hall"))}) {
        for (std::size_t size = 0; size < whole.size(); ++size) {
            const OperationReply reply = replyTo(whole.substr(0, size));
            EXPECT_EQ("1 Failed reading data", error(reply)) << size;
            EXPECT_EQ('\1' + text("Failed reading data"), reply.body) << size;
        }
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

TEST(BinaryHandler, AnErrorQuotesNoMoreThanAKilobyte) {
    const OperationReply reply = replyTo(enumerateBody(std::string(100000, 'x')));
    EXPECT_EQ("5 /root/cimv2:" + std::string(maximumDescription - 12, 'x'), error(reply));
    EXPECT_EQ(1u + 2 + 3 + maximumDescription, reply.body.size()) << "mark, code, length, text";
}

TEST(BinaryHandler, AProviderThatFailsIsAnErrorWithItsReason) {
    const OperationReply reply = replyTo(enumerateBody("QAV_Broken"));
    EXPECT_EQ("1 the lamp is broken", error(reply));
    EXPECT_EQ('\1' + text("the lamp is broken"), reply.body);
}
