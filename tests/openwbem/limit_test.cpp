// Limits of memory and time that a peer can make the client use.
#include "Clients.hpp"

#include <csignal>
#include <iostream>

namespace {

const std::size_t below = 60000; // bytes; the limits are 65,536
const std::size_t above = 70000;

const char failedReading[] = "IOException: Failed reading data";
const std::string body = wire::enumeration({});
const std::string chunk = "4\r\n" + body + "\r\n";

std::string headOf(std::size_t size) {
    std::string head = "HTTP/1.1 200 Ok\r\n";
    while (head.size() < size)
        head += "07-Header: something long enough to be a nuisance\r\n";
    return head;
}

std::string trailersOf(std::size_t size) {
    std::string trailers;
    while (trailers.size() < size)
        trailers += "07-Trailer: something long enough to be a nuisance\r\n";
    return trailers;
}

std::string messageOfStep(const Step& step) {
    ScriptedPeer peer({step});
    CIMClient client(peer.url().c_str(), "root/cimv2");
    return messageOfReading(client);
}

std::string messageInTime(const Step& step) {
    const support::TempDir directory;
    ScriptedPeer peer({step});
    return support::inChild(directory.path(), [&] {
        clientTimeouts().receive = std::chrono::milliseconds(100);
        CIMClient client(peer.url().c_str(), "root/cimv2");
        std::cout << messageOfReading(client);
    });
}

TEST(ClientLimit, AppliesToTheHead) {
    const std::string end = "Content-Length: 4\r\n\r\n" + body;
    EXPECT_EQ("no exception", messageOfReply(headOf(below) + end));
    EXPECT_EQ("HTTPException: Unable to process request: The head of the reply is too long",
              messageOfReply(headOf(200000) + end));
    EXPECT_EQ("HTTPException: Unable to process request: The head of the reply is too long",
              messageOfReply("HTTP/1.1 200 Ok\r\nX: " + std::string(above, 'x') + "\r\n" + end));
}

TEST(ClientLimit, AppliesToAHeadThatArrivesLineByLine) {
    EXPECT_EQ("HTTPException: Unable to process request: The head of the reply is too long",
              messageOfStep(Step::answerWithoutEnd("HTTP/1.1 200 Ok\r\n", "A: b\r\n")));
    EXPECT_EQ("HTTPException: Unable to process request: The head of the reply is too long",
              messageOfStep(Step::answerWithoutEnd("", "\r\n")));
}

TEST(ClientLimit, AppliesToChunkExtensions) {
    const auto reply = [](std::size_t size) {
        return chunkedHead + "4;" + std::string(size, 'x') + "\r\n" + body + "\r\n0\r\n\r\n";
    };
    EXPECT_EQ("no exception", messageOfReply(reply(below)));
    EXPECT_EQ(failedReading, messageOfReply(reply(above)));
    EXPECT_EQ(failedReading, messageOfStep(Step::answerWithoutEnd(chunkedHead + "4;", "x")));
}

TEST(ClientLimit, AppliesToTrailers) {
    const auto reply = [](const std::string& trailers) {
        return chunkedHead + chunk + "0\r\n" + trailers + "07-CIMStatusCode: 6\r\n\r\n";
    };
    EXPECT_EQ("CIMException: requested object could not be found", messageOfReply(reply(trailersOf(below))));
    EXPECT_EQ(failedReading, messageOfReply(reply(trailersOf(above))));
    EXPECT_EQ(failedReading,
              messageOfStep(Step::answerWithoutEnd(chunkedHead + chunk + "0\r\n", "07-Trailer: x\r\n")));
}

TEST(ClientLimit, AppliesToTheFramingOfABody) {
    const std::string start = std::string("\0oi\x01", 4) + wire::number(16000000); // starts a long name
    const std::string head = chunkedHead + std::to_string(start.size()) + "\r\n" + start + "\r\n";
    const std::string byte = "1;" + std::string(50000, 'x') + "\r\nx\r\n";
    EXPECT_EQ(failedReading, messageOfStep(Step::answerWithoutEnd(head, byte)));
}

TEST(ClientLimit, DoesNotCountTheAnnouncedSizeOfAChunk) {
    for (const char* size : {"ffffffffffffffff", "10000000000000000", "7fffffff", "-1", "0x4", "g", ""}) {
        const std::string reply = chunkedHead + size + "\r\n" + body + "\r\n0\r\n\r\n";
        EXPECT_EQ(failedReading, messageOfStep(Step::answerAndClose(reply))) << size;
    }
}

TEST(Client, ReadsAReplyThatArrivesByteByByte) {
    const std::string replies[] = {good, wire::chunkedReply("", {"07-CIMStatusCode: 6"}),
                                   chunkedHead + "0\r\n\r\n", "\r\n" + wire::plainReply(body)};
    for (const std::string& reply : replies)
        EXPECT_EQ(messageOfReply(reply), messageOfStep(Step::answerByteByByte(reply))) << reply;
}

TEST(ClientTimeout, LimitsTheWaitForTheWholeHead) {
    const char timedOut[] =
        "HTTPException: Unable to process request: Client receive timeout (0 seconds) expired.";
    EXPECT_EQ(timedOut, messageInTime(Step::staySilent()));
    EXPECT_EQ(timedOut, messageInTime(Step::dripWithoutEnd("HTTP/1.1 200 Ok\r\n", "A: b\r\n")));
    EXPECT_EQ(timedOut, messageInTime(Step::dripWithoutEnd("", "\r\n")));
}

TEST(ClientTimeout, LimitsTheWaitForBodyBytesDespiteFraming) {
    EXPECT_EQ(failedReading, messageInTime(Step::answer(chunkedHead)));
    EXPECT_EQ(failedReading, messageInTime(Step::answer(chunkedHead + chunk)));
    EXPECT_EQ(failedReading, messageInTime(Step::dripWithoutEnd(chunkedHead + "4;", "x")));
    EXPECT_EQ(failedReading, messageInTime(Step::dripWithoutEnd(chunkedHead + chunk + "0\r\n", "A: b\r\n")));
}

TEST(ClientTimeout, LimitsTheWaitForThePeerToAcceptTheRequest) {
    BusyListener listener;
    const support::TempDir directory;
    support::inChild(directory.path(), [&] {
        clientTimeouts().send = std::chrono::milliseconds(100);
        CIMClient client(listener.url().c_str(), "root/cimv2");
        EXPECT_EQ("HTTPException: Unable to process request: Client send timeout (0 seconds) expired.",
                  messageOfLongRequest(client));
    });
}

// The outcome of connecting to a listener with a full backlog while signals arrive.
std::string messageOfConnecting(BusyListener& listener) {
    listener.fill();
    const support::TempDir directory;
    return support::inChild(directory.path(), [&] {
        struct sigaction action {};
        action.sa_handler = [](int) {};
        ::sigaction(SIGALRM, &action, nullptr);
        const itimerval often = {{0, 20000}, {0, 20000}};
        ::setitimer(ITIMER_REAL, &often, nullptr);
        clientTimeouts().connect = std::chrono::milliseconds(200);
        CIMClient client(listener.url().c_str(), "root/cimv2");
        std::cout << messageOfReading(client);
    });
}

TEST(ClientTimeout, LimitsTheWaitForAConnectionDespiteSignals) {
    BusyListener listener;
    EXPECT_EQ("SocketException: Failed to connect to: " + listener.path() + ": timed out",
              messageOfConnecting(listener));
    BusyListener tcpListener(AF_INET);
    EXPECT_EQ("SocketException: SocketBaseImpl::connect() select timedout", messageOfConnecting(tcpListener));
}

} // namespace
