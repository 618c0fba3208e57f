// Hostile binary replies. Each one ends in an exception of the library, quickly and with little memory.
#include "OW_CIMInstance.hpp"
#include "OW_Exception.hpp"
#include "OW_IOException.hpp"

#include "Memory.hpp"
#include "PieceSource.hpp"
#include "Record.hpp"
#include "binary/Reply.hpp"
#include "io/Limits.hpp"
#include "support/Child.hpp"
#include "support/TempDir.hpp"
#include "support/Wire.hpp"

#include <gtest/gtest.h>
#include <string>

namespace {

using namespace OpenWBEM;
namespace wire = support::wire;

const std::string start("\0o", 2);

// Decodes any bytes. Only exceptions of the library are allowed.
std::string outcomeOf(const std::string& body) {
    PieceSource source(body);
    try {
        CIMInstanceEnumeration all = binary::readInstances(source);
        while (all.hasMoreElements())
            all.nextElement().toString();
    } catch (const Exception& e) {
        return std::string(e.type()) + ": " + e.getMessage();
    } catch (const std::exception& e) {
        ADD_FAILURE() << "a foreign exception: " << e.what();
    }
    return "no exception";
}

// Implausible values for a length, a count, a type or a version.
const std::string absurdNumbers[] = {
    "\x84\xff\xff\xff\xff",         std::string("\x84\x80\0\0\0", 5), "\x84\x7f\xff\xff\xff",
    std::string("\x84\1\0\0\1", 5), std::string("\x85\0\0\0\0\1", 6), "\xff",
};

class EveryByteOf : public testing::TestWithParam<const char*> {};

TEST_P(EveryByteOf, MayBeAnImplausibleNumber) {
    const std::string body =
        record::bodyOf(record::Conversation{std::string("ow-uds-anon/") + GetParam()}.received());
    const support::TempDir directory;
    support::inChild(directory.path(), [&] {
        limitMemory(200UL << 20);
        for (std::size_t at = 0; at < body.size(); ++at)
            for (const std::string& number : absurdNumbers)
                outcomeOf(body.substr(0, at) + number + body.substr(at + 1));
    });
}

INSTANTIATE_TEST_SUITE_P(Recorded, EveryByteOf,
                         testing::Values("enum_AllTypes", "enum_AllArrays", "enum_K70Chassis"),
                         [](const auto& test) { return std::string(test.param); });

// The start of an object that contains an object, repeated, never completed.
struct Opening {
    const char* name;
    std::string bytes;
};

std::ostream& operator<<(std::ostream& out, const Opening& opening) {
    return out << opening.name;
}

std::string cutBefore(const std::string& whole, const std::string& mark) {
    return whole.substr(0, whole.find(mark));
}

std::vector<Opening> openings() {
    const std::string noData = wire::number(0);
    const std::string type = "D" + wire::number(9) + wire::number(1) + noData + noData;
    const auto instanceWith = [](const std::string& property) {
        return cutBefore(wire::instance("Foo", {property}), "MARK");
    };
    const std::string qualifiers =
        "i\x01" + wire::text("Foo") + noData + noData + wire::number(1) + "q\x01" + wire::text("Q") + "\x01V";
    return {
        {"instances", instanceWith(wire::property("x", wire::EMBEDDEDINSTANCE, "MARK"))},
        {"arrays of instances", instanceWith(wire::arrayProperty("x", wire::EMBEDDEDINSTANCE, {"MARK"}))},
        {"keys", "i\x01" + wire::text("Foo") + wire::number(1) +
                     cutBefore(wire::property("x", wire::EMBEDDEDINSTANCE, "MARK"), "MARK")},
        {"qualifiers", qualifiers + wire::number(17) + noData},
        {"classes", instanceWith(wire::property("x", wire::EMBEDDEDCLASS, "MARK")) + "C" + wire::text("Foo") +
                        noData + noData + noData + noData + wire::number(1) +
                        cutBefore(wire::property("x", wire::EMBEDDEDINSTANCE, "MARK"), "MARK")},
        {"references", instanceWith(wire::property("x", wire::REFERENCE, "MARK")) + "ON" + noData + "U" +
                           noData + wire::text("Foo") + wire::number(1) +
                           cutBefore(wire::property("x", wire::EMBEDDEDINSTANCE, "MARK"), "MARK")},
    };
}

class Nesting : public testing::TestWithParam<Opening> {};

TEST_P(Nesting, WithoutEndIsRejected) {
    std::string body = start;
    for (int depth = 0; depth < 200000; ++depth)
        body += GetParam().bytes;
    EXPECT_EQ("IOException: Failed reading data: objects are nested too deeply", outcomeOf(body));
    PieceSource source(body);
    EXPECT_THROW(binary::readInstances(source), IOException);
    EXPECT_GE(1000U * GetParam().bytes.size(), source.handedOut()) << "and the rest is not even asked for";
}

INSTANTIATE_TEST_SUITE_P(Of, Nesting, testing::ValuesIn(openings()));

TEST(Text, OfTheMaximumLengthIsAcceptedAndALongerOneRejected) {
    const std::string longest(io::maximumText, 'x');
    const std::string end =
        wire::number(0) + wire::number(0) + wire::number(0) + wire::number(0) + "\x98\x98";
    EXPECT_EQ("no exception", outcomeOf(start + "i\x01" + wire::text(longest) + end));
    EXPECT_EQ("IOException: Failed reading data: a text is too long",
              outcomeOf(start + "i\x01" + wire::text(longest + "x") + end));
}

TEST(Text, AllocatesOnlyForBytesThatArrive) {
    const std::string property = wire::stringProperty("x", "");
    const std::string head =
        property.substr(0, property.size() - 1) + wire::number(io::maximumText) + "short";
    const support::TempDir directory;
    support::inChild(directory.path(), [&] {
        limitMemory(4UL << 20);
        EXPECT_EQ("IOException: Failed reading data",
                  outcomeOf(start + "i\x01" + wire::text("Foo") + wire::number(0) + wire::number(1) + head));
    });
}

TEST(Array, AllocatesOnlyForElementsThatArrive) {
    const std::string property = wire::arrayProperty("x", wire::UINT64, {});
    const std::string head = property.substr(0, property.size() - 1) + wire::number(0xffffffffU);
    const std::string body = start + "i\x01" + wire::text("Foo") + wire::number(0) + wire::number(1) + head +
                             std::string(8000000, '\1');
    const support::TempDir directory;
    support::inChild(directory.path(), [&] {
        limitMemory(40UL << 20);
        EXPECT_EQ("IOException: Failed reading data", outcomeOf(body));
    });
}

TEST(Array, OfTheMaximumSizeIsAcceptedAndALargerOneRejected) {
    const auto bodyWith = [](std::size_t elements) {
        const std::string property = wire::arrayProperty("x", wire::BOOLEAN, {});
        return start + "i\x01" + wire::text("Foo") + wire::number(0) + wire::number(1) +
               property.substr(0, property.size() - 1) + wire::number(elements) +
               std::string(elements, '\1') + wire::number(0) + wire::number(0) + "\x98\x98";
    };
    EXPECT_EQ("no exception", outcomeOf(bodyWith(io::maximumElements)));
    EXPECT_EQ("IOException: Failed reading data: too many elements",
              outcomeOf(bodyWith(io::maximumElements + 1)));
}

TEST(Instance, WithoutEndIsRejected) {
    const std::string property = wire::stringProperty("x", std::string(1000000, 'x'));
    const std::string head = start + "i\x01" + wire::text("Foo") + wire::number(0) + wire::number(1000000);
    const support::TempDir directory;
    support::inChild(directory.path(), [&] {
        limitMemory(200UL << 20);
        EndlessSource body(head, property);
        try {
            binary::readInstances(body);
            ADD_FAILURE() << "no exception";
        } catch (const IOException& e) {
            EXPECT_STREQ("Failed reading data: an object is too long", e.getMessage());
        }
        EXPECT_NEAR(double{io::maximumObject}, static_cast<double>(body.handedOut()), 100000);
    });
}

TEST(Instances, TogetherMayExceedTheLimitOfOne) {
    const std::string instance =
        wire::instance("Foo", {wire::stringProperty("x", std::string(1000000, 'x'))});
    std::string body = start;
    for (std::size_t size = 0; size <= io::maximumObject; size += instance.size())
        body += instance;
    body += "\x98\x98";
    EXPECT_EQ("no exception", outcomeOf(body));
}

// Expects that a million equal instances fit into this memory.
void expectMillionFits(const std::string& instance, unsigned long bytes) {
    std::string body = start;
    for (int i = 0; i < 1000000; ++i)
        body += instance;
    const support::TempDir directory;
    support::inChild(directory.path(), [&] {
        limitMemory(bytes);
        EXPECT_EQ("IOException: Failed reading data", outcomeOf(body));
    });
}

TEST(Instances, OfManyNamesNeedASmallMultipleOfTheirBytes) {
    expectMillionFits(wire::instance("", {wire::nullProperty("", wire::STRING)}), 200UL << 20); // 26 MB
}

TEST(Instances, ThatAreEmptyNeedLittleMoreThanTheirBytes) {
    expectMillionFits("i\x01" + std::string(5, '\0'), 20UL << 20); // 7 MB
}

TEST(Instances, ThatAreEmptyCanBeChangedIndependently) {
    const std::string body =
        start + wire::instance("A", {}) + wire::instance("A", {}) + wire::instance("B", {}) + "\x98\x98";
    PieceSource source(body);
    CIMInstanceEnumeration all = binary::readInstances(source);
    CIMInstance first = all.nextElement();
    first.setClassName("Changed");
    EXPECT_EQ("A", all.nextElement().getClassName());
    EXPECT_EQ("B", all.nextElement().getClassName());
}

TEST(Dates, OutOfRangeAreAccepted) {
    const std::string date = std::string(16, '\xff') + '\0';
    EXPECT_EQ(
        "no exception",
        outcomeOf(start + wire::instance("Foo", {wire::property("x", wire::DATETIME, date)}) + "\x98\x98"));
}

} // namespace
