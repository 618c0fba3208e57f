// The encoder and the decoder of PDUs, byte by byte.
#include "snmp/Pdus.hpp"
#include "snmp/agentx/Pdu.hpp"
#include "snmp/agentx/Writer.hpp"

#include <gtest/gtest.h>

using namespace snmp;
using namespace snmp::agentx;
using pdus::Bytes;
using pdus::Head;

namespace {

/** A text of hexadecimal digits, blanks ignored, as bytes. */
std::string bytes(const std::string& digits) {
    std::string result;
    int half = -1;
    for (const char c : digits) {
        if (c == ' ')
            continue;
        const int digit = c <= '9' ? c - '0' : c - 'a' + 10;
        if (half >= 0)
            result += static_cast<char>(half * 16 + digit);
        half = half >= 0 ? -1 : digit;
    }
    return result;
}

Oid oidOf(std::size_t size) {
    Oid oid{1, 3, 6, 1, 2};
    oid.resize(size, 4294967295U);
    return oid;
}

Header headerOf(const std::string& pdu) {
    return readHeader(std::string_view(pdu).substr(0, headerSize));
}

std::string_view payloadOf(const std::string& pdu) {
    return std::string_view(pdu).substr(headerSize);
}

/** The decoder, for PDUs of either byte order. */
class Decoder : public testing::TestWithParam<bool> {
protected:
    Decoder() { head.isLittle = GetParam(); }

    SetRequest readSet(const Bytes& payload) const {
        const std::string set = pdus::pdu(8, head, payload.text());
        return readSetRequest(headerOf(set), payloadOf(set));
    }
    Value readValue(unsigned type, const Bytes& value) const {
        Bytes payload(head);
        payload.number(type, 2).number(0, 2).oid(mib2).raw(value.text());
        return readSet(payload).values.at(0).value;
    }

    Head head;
};

std::string orderName(const testing::TestParamInfo<bool>& info) {
    return info.param ? "LittleEndian" : "BigEndian";
}

INSTANTIATE_TEST_SUITE_P(Of, Decoder, testing::Bool(), orderName);

} // namespace

TEST_P(Decoder, ReadsEveryFieldOfAHeader) {
    head.session = 0x01020304;
    head.transaction = 0x05060708;
    head.packet = 0x090a0b0c;
    const Header header = headerOf(pdus::pdu(9, head, "1234"));
    EXPECT_EQ(1, header.version);
    EXPECT_EQ(PduType::commitSet, header.type);
    EXPECT_EQ(head.session, header.session);
    EXPECT_EQ(head.transaction, header.transaction);
    EXPECT_EQ(head.packet, header.packet);
    EXPECT_EQ(4u, header.length);
}

TEST_P(Decoder, ReadsRangesWithTheirContext) {
    head.context = "owb";
    const std::string next = pdus::getNext(head, {{{1, 3}, true, {1, 4}}, {{1, 5}}});
    const RangeRequest request = readRangeRequest(headerOf(next), payloadOf(next));
    EXPECT_EQ("owb", request.context);
    ASSERT_EQ(2u, request.ranges.size());
    EXPECT_EQ((Oid{1, 3}), request.ranges[0].start);
    EXPECT_TRUE(request.ranges[0].include);
    EXPECT_EQ((Oid{1, 4}), request.ranges[0].end);
    EXPECT_FALSE(request.ranges[1].include);
    EXPECT_EQ(Oid{}, request.ranges[1].end);
}

TEST_P(Decoder, ReadsTheNumbersOfAGetBulk) {
    const std::string bulk = pdus::getBulk(head, 2, 513, {{{1, 3}}});
    const RangeRequest request = readRangeRequest(headerOf(bulk), payloadOf(bulk));
    EXPECT_EQ(2, request.nonRepeaters);
    EXPECT_EQ(513, request.repetitions);
    EXPECT_EQ("", request.context);
}

TEST_P(Decoder, ReadsAnIdentifierWithAPrefix) {
    Bytes payload(head);
    payload.shortOid({1, 3, 6, 1, 2, 1, 70000}).oid({});
    const std::string get = pdus::pdu(5, head, payload.text());
    EXPECT_EQ((Oid{1, 3, 6, 1, 2, 1, 70000}),
              readRangeRequest(headerOf(get), payloadOf(get)).ranges[0].start);
}

TEST_P(Decoder, ReadsEveryTypeOfValue) {
    EXPECT_EQ((Value{Type::integer, std::uint64_t(-2)}), readValue(2, Bytes(head).number(0xFFFFFFFE, 4)));
    EXPECT_EQ((Value{Type::octetString, std::string("abcde")}), readValue(4, Bytes(head).octets("abcde")));
    EXPECT_EQ((Value{Type::null, {}}), readValue(5, Bytes(head)));
    EXPECT_EQ((Value{Type::objectIdentifier, Oid{1, 3}}), readValue(6, Bytes(head).oid({1, 3})));
    EXPECT_EQ((Value{Type::objectIdentifier, Oid{0, 0}}), readValue(6, Bytes(head).oid({})));
    EXPECT_EQ((Value{Type::ipAddress, std::string("\x7f\0\0\1", 4)}),
              readValue(64, Bytes(head).octets(std::string("\x7f\0\0\1", 4))));
    EXPECT_EQ((Value{Type::counter32, std::uint64_t{0xFFFFFFFF}}),
              readValue(65, Bytes(head).number(0xFFFFFFFF, 4)));
    EXPECT_EQ((Value{Type::gauge32, std::uint64_t{1}}), readValue(66, Bytes(head).number(1, 4)));
    EXPECT_EQ((Value{Type::timeTicks, std::uint64_t{2}}), readValue(67, Bytes(head).number(2, 4)));
    EXPECT_EQ((Value{Type::opaque, std::string("x")}), readValue(68, Bytes(head).octets("x")));
    EXPECT_EQ((Value{Type::counter64, std::uint64_t{0x0102030405060708}}),
              readValue(70, Bytes(head).number(0x0102030405060708, 8)));
    for (const unsigned type : {128U, 129U, 130U})
        EXPECT_EQ((Value{static_cast<Type>(type), {}}), readValue(type, Bytes(head)));
}

TEST_P(Decoder, RejectsUnknownTypesAndLengthsOfValues) {
    for (const unsigned type : {0U, 1U, 3U, 69U, 71U, 127U, 131U, 65535U})
        EXPECT_THROW(readValue(type, Bytes(head)), Malformed) << type;
    EXPECT_THROW(readValue(64, Bytes(head).octets("123")), Malformed);
    EXPECT_THROW(readValue(64, Bytes(head).octets("12345")), Malformed);
    EXPECT_THROW(readValue(4, Bytes(head).number(0xFFFFFFFF, 4).raw("abcd")), Malformed);
    EXPECT_THROW(readValue(4, Bytes(head).number(5, 4).raw("abcde")), Malformed) << "the padding is missing";
}

TEST_P(Decoder, ReadsAtMost128SubIdentifiers) {
    EXPECT_EQ(oidOf(128), readSet(Bytes(head).number(5, 2).number(0, 2).oid(oidOf(128))).values[0].oid);
    EXPECT_EQ(oidOf(128), readSet(Bytes(head).number(5, 2).number(0, 2).shortOid(oidOf(128))).values[0].oid);
    EXPECT_THROW(readSet(Bytes(head).number(5, 2).number(0, 2).oid(oidOf(129))), Malformed);
    EXPECT_THROW(readSet(Bytes(head).number(5, 2).number(0, 2).shortOid(oidOf(129))), Malformed);
}

TEST_P(Decoder, RejectsAPduThatEndsTooEarly) {
    head.context = "owb";
    const std::string set = pdus::testSet(head, {{{1, 3, 6}, "text"}});
    const std::size_t contextEnd = headerSize + 8;
    for (std::size_t size = headerSize; size < set.size(); ++size) {
        const std::string cut = set.substr(0, size);
        if (size == contextEnd) // without values, but whole
            EXPECT_TRUE(readSetRequest(headerOf(cut), payloadOf(cut)).values.empty());
        else
            EXPECT_THROW(readSetRequest(headerOf(cut), payloadOf(cut)), Malformed) << size;
    }
    EXPECT_THROW(readHeader(std::string_view(set).substr(0, headerSize - 1)), Malformed);
}

TEST_P(Decoder, RejectsARangeWithoutEnd) {
    const std::string get = pdus::pdu(5, head, Bytes(head).oid({1, 3}).text());
    EXPECT_THROW(readRangeRequest(headerOf(get), payloadOf(get)), Malformed);
}

TEST_P(Decoder, ReadsAResponse) {
    const std::string pdu = pdus::response(head, 123456, 263);
    const Response response = readResponse(headerOf(pdu), payloadOf(pdu));
    EXPECT_EQ(123456u, response.upTime);
    EXPECT_EQ(263, response.error);
    EXPECT_TRUE(response.variables.empty());
}

TEST_P(Decoder, ReadsTheReasonOfAClose) {
    const std::string shutdown = pdus::close(head, 5);
    EXPECT_EQ("shutdown", readClose(headerOf(shutdown), payloadOf(shutdown)));
    for (const std::uint8_t reason : std::initializer_list<std::uint8_t>{0, 7, 255}) {
        const std::string other = pdus::close(head, reason);
        EXPECT_EQ("reason " + std::to_string(reason), readClose(headerOf(other), payloadOf(other)));
    }
    const std::string longer = pdus::pdu(2, head, std::string(8, '\1'));
    EXPECT_THROW(readClose(headerOf(longer), payloadOf(longer)), Malformed);
}

TEST(Encoder, AnOpenHasTheNullIdentifierATimeoutAndADescription) {
    Header header;
    header.packet = 9;
    EXPECT_EQ(bytes("01011000 00000000 00000000 00000009 00000010"
                    "05000000 00000000 00000003 6f776200"),
              openPdu(header, 5, "owb"));
}

TEST(Encoder, ARegistrationHasItsContextPriorityAndSubtree) {
    Header header;
    header.session = 7;
    EXPECT_EQ(bytes("01031800 00000007 00000000 00000000 00000014"
                    "00000003 6f776200 00640000 01020000 00000001"),
              registerPdu(header, "owb", 100, mib2));
    EXPECT_EQ(bytes("01031000 00000007 00000000 00000000 0000000c 00640000 01020000 00000001"),
              registerPdu(header, "", 100, mib2));
}

TEST(Encoder, CapabilitiesHaveTheirContextModuleAndDescription) {
    EXPECT_EQ(bytes("01101800 00000000 00000000 00000000 00000018"
                    "00000001 78000000 01020000 00000001 00000004 74657874"),
              addAgentCapsPdu(Header(), "x", mib2, "text"))
        << "padded to four bytes";
}

TEST(Encoder, APingHasNothingButItsContext) {
    EXPECT_EQ(bytes("010d1000 00000000 00000000 00000000 00000000"), pingPdu(Header(), ""));
    EXPECT_EQ(bytes("010d1800 00000000 00000000 00000000 00000008 00000001 78000000"),
              pingPdu(Header(), "x"));
}

TEST(Encoder, ACloseSaysShutdown) {
    EXPECT_EQ(bytes("01021000 00000000 00000000 00000000 00000004 05000000"), closePdu(Header()));
}

TEST(Encoder, AResponseIsReadBackAsItWasWritten) {
    Response response;
    response.error = 17;
    response.index = 2;
    response.variables = {{{1, 3, 6, 1, 2, 1}, {Type::integer, std::uint64_t(-5)}},
                          {{1, 3, 6, 1, 256, 1}, {Type::counter64, std::uint64_t(1) << 63}},
                          {{0, 0}, {Type::octetString, std::string("seven77")}},
                          {{1}, {Type::objectIdentifier, Oid{0, 0}}},
                          {{2}, {Type::ipAddress, std::string("\x7f\0\0\1", 4)}},
                          {{3}, {Type::timeTicks, std::uint64_t{4294967295}}},
                          {{4}, {Type::endOfMibView, {}}}};
    ResponsePdu written(Header(), response.error, response.index);
    for (const VarBind& variable : response.variables)
        written.add(variable);
    const std::size_t size = written.size();
    const std::string pdu = written.take();
    EXPECT_EQ(size, pdu.size());
    EXPECT_EQ(0u, pdu.size() % 4);
    const Response read = readResponse(headerOf(pdu), payloadOf(pdu));
    EXPECT_EQ(0u, read.upTime) << "the master has its own";
    EXPECT_EQ(17, read.error);
    EXPECT_EQ(2, read.index);
    ASSERT_EQ(response.variables.size(), read.variables.size());
    EXPECT_EQ(Oid{}, read.variables[2].oid) << "0.0 is the null identifier";
    for (std::size_t i = 0; i < read.variables.size(); ++i) {
        EXPECT_EQ(response.variables[i].value, read.variables[i].value) << i;
        if (i != 2) {
            EXPECT_EQ(response.variables[i].oid, read.variables[i].oid) << i;
        }
    }
}

TEST(Encoder, OnlyOneByteOfTheFifthSubIdentifierIsAPrefix) {
    const auto written = [](const Oid& oid) {
        Writer writer;
        writer.oid(oid, true);
        return writer.bytes();
    };
    EXPECT_EQ(bytes("00ff0100"), written({1, 3, 6, 1, 255}));
    EXPECT_EQ(bytes("05000100 00000001 00000003 00000006 00000001 00000100"), written({1, 3, 6, 1, 256}));
    EXPECT_EQ(bytes("05000100 00000001 00000003 00000006 00000001 00000000"), written({1, 3, 6, 1, 0}));
    EXPECT_EQ(bytes("04000100 00000001 00000003 00000006 00000001"), written({1, 3, 6, 1}));
}

TEST(Errors, HaveTheirNamesAndNumbers) {
    EXPECT_EQ("duplicateRegistration (263)", errorText(263));
    EXPECT_EQ("requestDenied (267)", errorText(267));
    EXPECT_EQ("error 5", errorText(5));
}
