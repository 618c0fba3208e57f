// Sets, phase by phase.
#include "snmp/SessionTest.hpp"

using namespace snmp;
using namespace snmp::agentx;

namespace {

class TransactionsTest : public SessionTest {
protected:
    TransactionsTest() {
        head.context = "owb";
        head.transaction = 5;
        establish();
    }

    std::string set(const std::string& text = "new") { return pdus::testSet(next(), {{oid(1), text}}); }
    std::string commit() { return pdus::commitSet(next()); }
    std::string undo() { return pdus::undoSet(next()); }
    std::string cleanUp() { return pdus::cleanupSet(next()); }
    /** Every PDU of a master has its own packet number. */
    const pdus::Head& next() {
        ++head.packet;
        return head;
    }
    std::string value() const { return objects.textOf(oid(1)); }
    /** Waits until the subagent has carried out all that was sent. */
    void settle() { EXPECT_TRUE(master.isSilent()); }
};

} // namespace

TEST_F(TransactionsTest, ACommittedValueIsWritten) {
    EXPECT_EQ(0u, errorOf(set()));
    EXPECT_EQ("text 1", value()) << "a test writes nothing";
    EXPECT_EQ(0u, errorOf(commit()));
    EXPECT_EQ("new", value());
    master.send(cleanUp());
    settle();
    EXPECT_EQ(0u, objects.writes);
    EXPECT_EQ("new", value());
}

TEST_F(TransactionsTest, ALaterPhaseMayNameItsContext) {
    EXPECT_EQ(0u, errorOf(set()));
    EXPECT_EQ(0u, errorOf(pdus::pdu(9, next(), ""))) << "with a context";
    head.context.clear();
    EXPECT_EQ(0u, errorOf(undo())) << "without";
}

TEST_F(TransactionsTest, AnUndoneValueIsTheOldOne) {
    errorOf(set());
    errorOf(commit());
    EXPECT_EQ(0u, errorOf(undo()));
    EXPECT_EQ("text 1", value());
    EXPECT_EQ(0u, objects.writes);
    EXPECT_EQ(268u, errorOf(undo())) << "the transaction is over";
}

TEST_F(TransactionsTest, AFailedTestNamesItsVariableAndEndsTheTransaction) {
    const Response response = master.exchange(pdus::testSet(next(), {{oid(1), "new"}, {oid(9), "new"}}));
    EXPECT_EQ(11, response.error) << "noCreation";
    EXPECT_EQ(2, response.index);
    EXPECT_EQ(0u, objects.writes);
    EXPECT_EQ(268u, errorOf(commit()));
    EXPECT_EQ("text 1", value());
}

TEST_F(TransactionsTest, AFailedCommitMayBeUndone) {
    objects.commitResult = {Error::commitFailed, 1};
    errorOf(set());
    const Response response = master.exchange(commit());
    EXPECT_EQ(14, response.error);
    EXPECT_EQ(1, response.index);
    EXPECT_EQ(0u, errorOf(undo()));
    EXPECT_EQ("text 1", value());
}

TEST_F(TransactionsTest, AFailedUndoIsReported) {
    objects.undoResult = {Error::undoFailed, 1};
    errorOf(set());
    errorOf(commit());
    EXPECT_EQ(15u, errorOf(undo()));
    EXPECT_EQ(0u, objects.writes);
}

TEST_F(TransactionsTest, APhaseOfAnUnknownTransactionIsRefused) {
    EXPECT_EQ(268u, errorOf(commit()));
    EXPECT_EQ(268u, errorOf(undo()));
    master.send(cleanUp());
    settle();
}

TEST_F(TransactionsTest, APhaseOutOfOrderIsRefusedAndChangesNothing) {
    errorOf(set());
    EXPECT_EQ(268u, errorOf(set("another"))) << "a second test";
    EXPECT_EQ(0u, errorOf(commit()));
    EXPECT_EQ("new", value());
    EXPECT_EQ(268u, errorOf(set("another"))) << "a test after the commit";
    objects.setText(oid(1), "by another");
    EXPECT_EQ(268u, errorOf(commit())) << "a second commit";
    EXPECT_EQ("by another", value());
}

TEST_F(TransactionsTest, AnUndoWithoutACommitHasNothingToUndo) {
    errorOf(set());
    EXPECT_EQ(0u, errorOf(undo()));
    EXPECT_EQ(0u, objects.writes);
    EXPECT_EQ(268u, errorOf(commit()));
}

TEST_F(TransactionsTest, ACleanupInsteadOfACommitWritesNothing) {
    errorOf(set());
    master.send(cleanUp());
    settle();
    EXPECT_EQ(0u, objects.writes);
    EXPECT_EQ(268u, errorOf(commit()));
    EXPECT_EQ("text 1", value());
}

TEST_F(TransactionsTest, OtherPdusAreAnsweredDuringACommit) {
    objects.holdsPhases = true;
    errorOf(set());
    master.send(commit());
    settle();
    EXPECT_EQ(1u, master.exchange(pdus::get(next(), {oid(2)})).variables.size());
    objects.running.at(0)({Error::commitFailed, 1});
    EXPECT_EQ(14, responseIn(master.receive()).error);
}

TEST_F(TransactionsTest, ARepeatedPduOfARunningPhaseHasOneResponse) {
    objects.holdsPhases = true;
    errorOf(set());
    const std::string committing = commit();
    master.send(committing + committing);
    settle();
    objects.running.at(0)({});
    EXPECT_EQ(0, responseIn(master.receive()).error);
    const std::string undoing = undo();
    master.send(undoing + undoing);
    settle();
    objects.running.at(1)({});
    EXPECT_EQ(0, responseIn(master.receive()).error);
    EXPECT_EQ(2u, objects.running.size());
    settle();
}

TEST_F(TransactionsTest, AnotherPduOfARunningPhaseIsRefused) {
    objects.holdsPhases = true;
    errorOf(set());
    master.send(commit());
    EXPECT_EQ(268u, errorOf(commit()));
    objects.running.at(0)({});
    EXPECT_EQ(0, responseIn(master.receive()).error);
    master.send(undo());
    EXPECT_EQ(268u, errorOf(undo()));
    EXPECT_EQ(268u, errorOf(commit()));
}

TEST_F(TransactionsTest, AnUndoWaitsForTheEndOfTheCommit) {
    objects.holdsPhases = true;
    errorOf(set());
    master.send(commit());
    master.send(undo());
    master.send(cleanUp());
    settle();
    ASSERT_EQ(1u, objects.running.size());
    objects.running[0]({});
    EXPECT_EQ(0, responseIn(master.receive()).error);
    ASSERT_EQ(2u, objects.running.size());
    EXPECT_EQ("text 1", value());
    objects.running[1]({});
    EXPECT_EQ(0, responseIn(master.receive()).error);
    EXPECT_EQ(0u, objects.writes);
}

TEST_F(TransactionsTest, ACleanupDuringACommitEndsTheTransaction) {
    objects.holdsPhases = true;
    errorOf(set());
    master.send(commit());
    master.send(cleanUp());
    settle();
    EXPECT_EQ(0u, objects.writes);
    EXPECT_EQ("new", value());
}

TEST_F(TransactionsTest, ATestThatWaitsMayBeCleanedUpOrUndone) {
    objects.holdsPreparations = true;
    master.send(set());
    master.send(cleanUp());
    settle();
    master.send(set()); // the same transaction, once more
    settle();
    objects.waiting.at(0)();
    settle();
    objects.waiting.at(1)();
    EXPECT_EQ(0, responseIn(master.receive()).error);
    EXPECT_EQ(1u, objects.writes);
    head.transaction = 6;
    master.send(set());
    EXPECT_EQ(0u, errorOf(undo()));
    objects.waiting.at(2)();
    settle();
}

TEST_F(TransactionsTest, SeveralTransactionsKeepApart) {
    errorOf(pdus::testSet(next(), {{oid(1), "first"}}));
    head.transaction = 6;
    errorOf(pdus::testSet(next(), {{oid(2), "second"}}));
    EXPECT_EQ(0u, errorOf(commit()));
    EXPECT_EQ("text 1", value());
    EXPECT_EQ("second", objects.textOf(oid(2)));
    head.transaction = 5;
    EXPECT_EQ(0u, errorOf(commit()));
    EXPECT_EQ("first", value());
}

TEST_F(TransactionsTest, TooManyTransactionsAreRefused) {
    for (head.transaction = 0; head.transaction < mostTransactions; ++head.transaction)
        EXPECT_EQ(0u, errorOf(set()));
    EXPECT_EQ(13u, errorOf(set()));
    head.transaction = 0;
    master.send(cleanUp());
    head.transaction = mostTransactions;
    EXPECT_EQ(0u, errorOf(set()));
}

TEST_F(TransactionsTest, AMasterThatDiesAfterTheTestWritesNothing) {
    errorOf(set());
    master.close();
    master.establish(2);
    EXPECT_EQ(0u, objects.writes);
    EXPECT_EQ("text 1", value());
    EXPECT_EQ(268u, errorOf(commit()));
}

TEST_F(TransactionsTest, AMasterThatDiesDuringATestWritesNothing) {
    objects.holdsPreparations = true;
    master.send(set());
    settle();
    master.close();
    master.establish(2);
    objects.waiting.at(0)();
    settle();
    EXPECT_EQ(0u, objects.writes);
}

TEST_F(TransactionsTest, AMasterThatDiesAfterOrDuringTheCommitLeavesTheNewValue) {
    errorOf(set());
    errorOf(commit());
    master.close();
    master.establish(2);
    EXPECT_EQ(0u, objects.writes);
    EXPECT_EQ("new", value());
    objects.holdsPhases = true;
    errorOf(set("newer"));
    master.send(commit());
    settle();
    master.close();
    master.establish(2);
    EXPECT_EQ(0u, objects.writes);
    EXPECT_EQ("newer", value());
}

TEST_F(TransactionsTest, AMasterThatDiesDuringTheUndoLeavesTheOldValue) {
    errorOf(set());
    errorOf(commit());
    objects.holdsPhases = true;
    master.send(undo());
    settle();
    master.close();
    master.establish(2);
    EXPECT_EQ(0u, objects.writes);
    EXPECT_EQ("text 1", value());
}
