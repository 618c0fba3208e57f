// Reads: Get, GetNext and GetBulk.
#include "snmp/SessionTest.hpp"

using namespace snmp;
using namespace snmp::agentx;

namespace {

class RequestsTest : public SessionTest {
protected:
    RequestsTest() {
        head.context = "owb";
        head.transaction = 21;
        head.packet = 22;
        establish();
    }

    std::vector<VarBind> variables(const std::string& pdu) {
        const ReceivedPdu received = (master.send(pdu), master.receive());
        EXPECT_EQ(7u, received.header.session);
        EXPECT_EQ(21u, received.header.transaction);
        EXPECT_EQ(22u, received.header.packet);
        const Response response = responseIn(received);
        EXPECT_EQ(0u, response.error);
        EXPECT_EQ(0u, response.index);
        return response.variables;
    }
    /** The numbers of the texts in a response; 0 for the end of the view. */
    std::vector<std::uint32_t> numbers(const std::string& pdu) {
        std::vector<std::uint32_t> result;
        for (const VarBind& each : variables(pdu))
            result.push_back(each.value.type == Type::endOfMibView ? 0 : each.oid.at(7));
        return result;
    }

    using Numbers = std::vector<std::uint32_t>;
};

} // namespace

TEST_F(RequestsTest, AGetReturnsEachValueInOrder) {
    const std::vector<VarBind> got = variables(pdus::get(head, {oid(2), oid(9), oid(1)}));
    ASSERT_EQ(3u, got.size());
    EXPECT_EQ(oid(2), got[0].oid);
    EXPECT_EQ((Value{Type::octetString, std::string("text 2")}), got[0].value);
    EXPECT_EQ(oid(9), got[1].oid);
    EXPECT_EQ(Type::noSuchInstance, got[1].value.type);
    EXPECT_EQ((Value{Type::octetString, std::string("text 1")}), got[2].value);
}

TEST_F(RequestsTest, AGetNextReturnsTheNextObjectOfEachRange) {
    EXPECT_EQ(
        (Numbers{1, 2, 3, 0, 0}),
        numbers(pdus::getNext(
            head, {{{1, 3, 6, 1, 2, 1, 1}}, {oid(1)}, {oid(3), true}, {oid(3), false, oid(4)}, {oid(4)}})));
}

TEST_F(RequestsTest, TheEndOfARangeIsReportedWithItsStart) {
    const std::vector<VarBind> got = variables(pdus::getNext(head, {{oid(4)}}));
    EXPECT_EQ(oid(4), got.at(0).oid);
    EXPECT_EQ(Type::endOfMibView, got.at(0).value.type);
}

TEST_F(RequestsTest, AGetBulkRepeatsAllButTheFirstRanges) {
    EXPECT_EQ((Numbers{2, 1, 3, 2, 4}), numbers(pdus::getBulk(head, 1, 2, {{oid(1)}, {oid(0)}, {oid(2)}})));
    EXPECT_EQ((Numbers{1, 2}), numbers(pdus::getBulk(head, 0, 2, {{oid(1), true}})));
    EXPECT_EQ((Numbers{2}), numbers(pdus::getBulk(head, 7, 5, {{oid(1)}}))) << "more than there are";
    EXPECT_EQ((Numbers{2}), numbers(pdus::getBulk(head, 1, 0, {{oid(1)}, {oid(2)}})));
}

TEST_F(RequestsTest, AGetBulkEndsAfterARepetitionWithoutObjects) {
    EXPECT_EQ((Numbers{4, 3, 0, 4, 0, 0}), numbers(pdus::getBulk(head, 0, 65535, {{oid(3)}, {oid(2)}})));
    EXPECT_EQ((Numbers{2, 0}), numbers(pdus::getBulk(head, 0, 65535, {{oid(1), false, oid(3)}})));
}

TEST_F(RequestsTest, AGetBulkEndsWhenItsReplyIsLong) {
    for (std::uint32_t i = 1; i <= 100; ++i)
        objects.setText(oid(i), std::string(1000, 'x'));
    const std::vector<VarBind> got = variables(pdus::getBulk(head, 0, 100, {{oid(0)}}));
    const std::size_t eachSize = 4 + 4 + 4 * 4 + 4 + 1000;
    EXPECT_EQ(longestBulk / eachSize + 1, got.size());
}

TEST_F(RequestsTest, AnEmptyRequestHasAnEmptyResponse) {
    EXPECT_TRUE(variables(pdus::get(head, {})).empty());
    EXPECT_TRUE(variables(pdus::getBulk(head, 3, 5, {})).empty());
}

TEST_F(RequestsTest, AnotherContextIsRefused) {
    for (const char* const context : {"", "owc", "owb "}) {
        head.context = context;
        EXPECT_EQ(262u, errorOf(pdus::get(head, {oid(1)}))) << context;
        EXPECT_EQ(262u, errorOf(pdus::getNext(head, {{oid(1)}})));
        EXPECT_EQ(262u, errorOf(pdus::getBulk(head, 0, 1, {{oid(1)}})));
        EXPECT_EQ(262u, errorOf(pdus::testSet(head, {})));
    }
}

TEST_F(RequestsTest, AnotherSessionIsRefused) {
    head.session = 8;
    EXPECT_EQ(257u, errorOf(pdus::get(head, {oid(1)})));
    EXPECT_EQ(257u, errorOf(pdus::getNext(head, {{oid(1)}})));
    EXPECT_EQ(257u, errorOf(pdus::getBulk(head, 0, 1, {{oid(1)}})));
    EXPECT_EQ(257u, errorOf(pdus::testSet(head, {})));
    EXPECT_EQ(257u, errorOf(pdus::commitSet(head)));
    EXPECT_EQ(257u, errorOf(pdus::undoSet(head)));
    master.send(pdus::cleanupSet(head));
    EXPECT_TRUE(master.isSilent()) << "it never has a response";
}

TEST_F(SessionTest, ARequestBeforeTheSessionIsOpenIsRefused) {
    start();
    master.accept();
    const ReceivedPdu open = master.receive();
    head.session = 0;
    EXPECT_EQ(257u, errorOf(pdus::get(head, {oid(1)})));
    master.reply(open);
    EXPECT_EQ(PduType::registerSubtree, master.receive().header.type);
}

TEST_F(RequestsTest, AMalformedRequestIsRefusedAndTheSessionGoesOn) {
    const std::string lying = pdus::Bytes(head).number(255, 1).number(2, 1).number(0, 2).text();
    for (const std::uint8_t type : std::initializer_list<std::uint8_t>{5, 6, 7, 8})
        EXPECT_EQ(266u, errorOf(pdus::pdu(type, head, lying + lying))) << int(type);
    EXPECT_EQ(266u, errorOf(pdus::pdu(5, pdus::Head(), lying)));
    EXPECT_EQ(1u, variables(pdus::get(head, {oid(1)})).size());
}

TEST_F(RequestsTest, APduThatASubagentDoesNotServeIsRefused) {
    for (unsigned type = 0; type < 256; ++type) {
        const bool isServed = type == 2 || (type >= 5 && type <= 11) || type == 18;
        if (!isServed) {
            EXPECT_EQ(266u, errorOf(pdus::pdu(static_cast<std::uint8_t>(type), head, ""))) << type;
        }
    }
    EXPECT_EQ(1u, log.size());
}

TEST_F(RequestsTest, ARequestThatWaitsDelaysNoOther) {
    objects.holdsPreparations = true;
    master.send(pdus::get(head, {oid(1)}));
    EXPECT_TRUE(master.isSilent());
    objects.holdsPreparations = false;
    EXPECT_EQ(Numbers{2}, numbers(pdus::get(head, {oid(2)})));
    objects.waiting.at(0)();
    EXPECT_EQ(oid(1), responseIn(master.receive()).variables.at(0).oid);
}

TEST_F(RequestsTest, TooManyWaitingRequestsAreRefused) {
    objects.holdsPreparations = true;
    for (std::size_t i = 0; i < mostWaiting; ++i)
        master.send(pdus::get(head, {oid(1)}));
    EXPECT_TRUE(master.isSilent());
    EXPECT_EQ(13u, errorOf(pdus::get(head, {oid(1)})));
    for (const auto& ready : objects.waiting)
        ready();
    for (std::size_t i = 0; i < mostWaiting; ++i)
        EXPECT_EQ(1u, responseIn(master.receive()).variables.size());
    objects.holdsPreparations = false;
    EXPECT_EQ(Numbers{1}, numbers(pdus::get(head, {oid(1)})));
}

TEST_F(RequestsTest, AnAnswerForALostMasterIsDropped) {
    objects.holdsPreparations = true;
    master.send(pdus::get(head, {oid(1)}));
    master.await([this] { return !objects.waiting.empty(); });
    master.close();
    master.establish(2);
    objects.waiting.at(0)();
    EXPECT_TRUE(master.isSilent());
}

TEST_F(RequestsTest, AnExceptionOfTheObjectsLosesTheMaster) {
    objects.onGet = [](const Oid&) { throw std::runtime_error("no memory"); };
    master.send(pdus::get(head, {oid(1)}));
    master.awaitClose();
    EXPECT_EQ(line("connection lost: no memory"), log.back());
    objects.onGet = [](const Oid&) {};
    master.establish(2);
    EXPECT_EQ(Numbers{1}, numbers(pdus::get(head, {oid(1)})));
}
