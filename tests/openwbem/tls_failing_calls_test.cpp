// System calls that fail in a handshake and in a request over TLS.
#include "TlsFixture.hpp"
#include "support/Descriptors.hpp"
#include "support/FailingCalls.hpp"

#include <cerrno>

namespace {

namespace calls = support::calls;
using support::TlsRelay;

// The calls that a signal interrupts.
const std::set<std::string> waiting = {"connect", "poll", "recv", "send"};

class TlsFailingCall : public TlsFixture {
protected:
    std::string outcome() const { return messageOfReadingFrom(m_relay.url()); }

    // The threads of the peers open descriptors, too, but not in a child.
    static void inChild(const std::function<void()>& body) {
        const support::TempDir directory;
        support::inChild(directory.path(), body);
    }

    void expectToLeakNothing(int error) const {
        ASSERT_EQ("no exception", outcome());
        const std::set<int> before = support::openDescriptors();
        long n = 0;
        for (bool hasFailed = true; hasFailed && !HasFailure(); ++n) {
            CIMClient client(m_relay.url().c_str(), "root/cimv2");
            calls::failAt(n, error);
            const std::string message = messageOfReading(client);
            hasFailed = calls::stopFailing();
            SCOPED_TRACE("call " + std::to_string(n) + ", " + calls::failed() + ": " + std::strerror(error));
            const bool isInterruption = error == EINTR && waiting.count(calls::failed()) == 1;
            EXPECT_TRUE(!isInterruption || message == "no exception") << message;
        }
        EXPECT_EQ(before, support::openDescriptors());
        EXPECT_LT(6, n) << "few calls have failed";
    }

private:
    const ScriptedPeer m_peer{{Step::answer(good)}, Listening::ipv4};
    const TlsRelay m_relay{m_peer.port()};
};

TEST_F(TlsFailingCall, IsAnExceptionAndLeaksNoDescriptor) {
    inChild([this] {
        for (const int error : {EINTR, EAGAIN, EMFILE, EIO, ENOMEM, ENOBUFS})
            expectToLeakNothing(error);
    });
}

TEST_F(TlsFailingCall, SucceedsIfEachTransfersASingleByte) {
    calls::transferSingleBytes();
    const std::string message = outcome();
    EXPECT_TRUE(calls::stopFailing());
    EXPECT_EQ("no exception", message);
}

} // namespace
