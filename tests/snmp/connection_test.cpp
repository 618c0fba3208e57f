// PDUs that arrive in pieces, and bytes that are no PDUs.
#include "snmp/SessionTest.hpp"

using namespace snmp;
using namespace snmp::agentx;

namespace {

class ConnectionTest : public SessionTest {
protected:
    ConnectionTest() { head.context = "owb"; }

    /** The log after bytes that end the connection. */
    std::string reasonFor(const std::string& bytes) {
        if (!session)
            start();
        master.establish(2);
        log.clear();
        master.send(bytes);
        master.awaitClose();
        EXPECT_EQ(1u, log.size());
        return log.at(0);
    }
    /** Only the header of a PDU. */
    std::string headerWith(unsigned version, std::uint64_t length) const {
        pdus::Bytes bytes(head);
        bytes.number(version, 1).number(5, 1).number(head.isLittle ? 0 : 0x10, 1).number(0, 1);
        return bytes.number(7, 4).number(0, 4).number(0, 4).number(length, 4).text();
    }
};

} // namespace

TEST_F(ConnectionTest, PdusOfBothByteOrdersMayBeSplitAnywhere) {
    establish();
    pdus::Head little = head;
    little.isLittle = true;
    const std::string all = pdus::get(head, {oid(1)}) + pdus::getNext(little, {{oid(1)}});
    for (std::size_t at = 0; at <= all.size(); ++at) {
        master.send(std::string_view(all).substr(0, at));
        master.send(std::string_view(all).substr(at));
        EXPECT_EQ(oid(1), responseIn(master.receive()).variables.at(0).oid) << at;
        EXPECT_EQ(oid(2), responseIn(master.receive()).variables.at(0).oid) << at;
    }
}

TEST_F(ConnectionTest, PdusMayArriveByteByByte) {
    establish();
    for (const char& byte : pdus::get(head, {oid(1), oid(2)}))
        master.send({&byte, 1});
    EXPECT_EQ(2u, responseIn(master.receive()).variables.size());
}

TEST_F(ConnectionTest, AHeaderThatNoPduHasEndsTheConnection) {
    for (const bool isLittle : {false, true}) {
        head.isLittle = isLittle;
        EXPECT_EQ(line("connection lost: PDU of unknown version"), reasonFor(headerWith(0, 0)));
        EXPECT_EQ(line("connection lost: PDU of unknown version"), reasonFor(headerWith(2, 0)));
        EXPECT_EQ(line("connection lost: PDU of invalid length"), reasonFor(headerWith(1, 3)));
        EXPECT_EQ(line("connection lost: PDU too long"), reasonFor(headerWith(1, longestPayload + 4)));
        EXPECT_EQ(line("connection lost: PDU too long"), reasonFor(headerWith(1, 0xFFFFFFFC)));
        log.clear();
    }
}

TEST_F(ConnectionTest, TheLongestPduIsAnswered) {
    establish();
    head.context.clear();
    EXPECT_EQ(266u, errorOf(pdus::pdu(5, head, std::string(longestPayload, '\xff'))));
}

TEST_F(ConnectionTest, AMasterThatClosesWithinAPduIsLost) {
    establish();
    master.send(headerWith(1, 400) + "the rest does not come");
    master.close();
    master.establish(2);
    EXPECT_EQ(line("connection lost: End of file"), log.at(1));
}

TEST_F(ConnectionTest, AMasterThatDoesNotReadIsNotReadFromUntilItDoes) {
    objects.setText(oid(1), std::string(60000, 'x'));
    establish();
    std::size_t answered = 0;
    objects.onGet = [&](const Oid&) { ++answered; };
    std::string requests;
    const std::size_t count = 200; // whose replies are 12 MB
    for (std::size_t i = 0; i < count; ++i)
        requests += pdus::get(head, {oid(1)});
    master.send(requests);
    io.restart();
    io.poll();
    EXPECT_LT(answered, count / 2);
    for (std::size_t i = 0; i < count; ++i)
        EXPECT_EQ(1u, responseIn(master.receive()).variables.size());
    EXPECT_EQ(count, answered);
}
