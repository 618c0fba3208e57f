// Limits on the command line of the object manager that are lower than the defaults.
#include "StartedDaemon.hpp"

namespace {

/** A request to enumerate a class, with a head or a body of the given size. */
std::string withHead(std::size_t size) {
    const std::string body = enumerateBody("QAV_System");
    const std::string shortest = httpRequest(body, "X-Filler: \r\n");
    const std::size_t head = shortest.size() - body.size();
    return httpRequest(body, "X-Filler: " + std::string(size - head, 'x') + "\r\n");
}

std::string withBody(std::size_t size) {
    std::string body = enumerateBody("QAV_System");
    body.resize(size, '\0'); // bytes after the arguments are ignored
    return httpRequest(body);
}

class LimitsTest : public StartedDaemon {
protected:
    unsigned statusOf(const std::string& request) { return Client(socketPath()).exchange(request).status; }
};

} // namespace

TEST_F(LimitsTest, AConnectionBeyondTheLimitIsRefused) {
    start({"--max-connections", "2"});
    Client first(socketPath());
    auto second = std::make_unique<Client>(socketPath());
    EXPECT_EQ(1u, count(first));
    EXPECT_EQ(1u, count(*second));
    Client third(socketPath());
    EXPECT_EQ(503u, third.receive().status);
    EXPECT_EQ("owbcimomd: uid " + std::to_string(::geteuid()) +
                  ": refused: 503 Service unavailable: connection queue full",
              daemon().nextErrorLine());
    EXPECT_EQ(1u, count(first));
}

TEST_F(LimitsTest, TheConnectionsOfAllSocketsCountTogether) {
    start({"--max-connections", "2", "--listen", "0"});
    Client local(socketPath());
    Client onNetwork(port());
    EXPECT_EQ(1u, count(local));
    EXPECT_EQ(1u, count(onNetwork));
    EXPECT_EQ(503u, Client(port()).receive().status);
    EXPECT_EQ(503u, Client(socketPath()).receive().status);
}

TEST_F(LimitsTest, AQuarterOfTheConnectionsIsReservedForLocalClients) {
    start({"--max-connections", "8", "--listen", "0"});
    std::vector<std::unique_ptr<Client>> onNetwork;
    for (int i = 0; i < 6; ++i) {
        onNetwork.push_back(std::make_unique<Client>(port()));
        EXPECT_EQ(1u, count(*onNetwork.back())) << i;
    }
    EXPECT_EQ(503u, Client(port()).receive().status);
    Client first(socketPath());
    Client second(socketPath());
    EXPECT_EQ(1u, count(first));
    EXPECT_EQ(1u, count(second));
    EXPECT_EQ(503u, Client(socketPath()).receive().status);
}

TEST_F(LimitsTest, LocalClientsMayHaveAllConnections) {
    start({"--max-connections", "4", "--listen", "0"});
    std::vector<std::unique_ptr<Client>> local;
    for (int i = 0; i < 4; ++i) {
        local.push_back(std::make_unique<Client>(socketPath()));
        EXPECT_EQ(1u, count(*local.back())) << i;
    }
    EXPECT_EQ(503u, Client(socketPath()).receive().status);
}

TEST_F(LimitsTest, AHeadBeyondTheLimitIsRefused) {
    start({"--max-head", "512"});
    EXPECT_EQ(200u, statusOf(withHead(512)));
    EXPECT_EQ(431u, statusOf(withHead(513)));
    EXPECT_EQ("owbcimomd: uid " + std::to_string(::geteuid()) +
                  ": refused: 431 Request header fields too large: The header exceeds 512 bytes.",
              daemon().nextErrorLine());
}

TEST_F(LimitsTest, ABodyBeyondTheLimitIsRefused) {
    start({"--max-body", "1000"});
    EXPECT_EQ(200u, statusOf(withBody(1000)));
    EXPECT_EQ(413u, statusOf(withBody(1001)));
}

TEST_F(LimitsTest, AnIdleConnectionTimesOutWithoutALogLine) {
    start({"--idle-time", "1"});
    Client client(socketPath());
    EXPECT_EQ(1u, count(client));
    EXPECT_EQ(408u, client.receive().status);
    EXPECT_TRUE(client.isClosedByPeer());
    Client(socketPath()).exchange(httpRequest(enumerateBody("QAV_Nope")));
    EXPECT_NE(std::string::npos, daemon().nextErrorLine().find("QAV_Nope"))
        << "the first line: a timeout between requests is not logged";
}

TEST_F(LimitsTest, AnIncompleteRequestTimesOut) {
    start({"--request-time", "1"});
    Client patient(socketPath());
    Client stuck(socketPath());
    EXPECT_EQ(1u, count(patient));
    stuck.send(httpRequest(enumerateBody("QAV_System")).substr(0, 50));
    EXPECT_EQ(408u, stuck.receive().status);
    EXPECT_TRUE(stuck.isClosedByPeer());
    EXPECT_EQ(1u, count(patient)) << "the limit between requests is longer";
}

TEST_F(LimitsTest, AllBodiesTogetherHaveALimit) {
    const support::ProgramResult result =
        support::runProgram({OWBCIMOMD, "--max-connections", "1025", "--max-body", "1048576"});
    EXPECT_EQ(2, result.exitCode);
    EXPECT_EQ("owbcimomd: command line: --max-connections times --max-body is more than 1 GiB\n", result.err);
    start({"--max-connections", "1024", "--max-body", "1048576"});
}

TEST_F(LimitsTest, AnInvalidLimitIsAnErrorOfTheCommandLine) {
    for (const char* const option :
         {"--max-connections", "--max-head", "--max-body", "--idle-time", "--request-time", "--stop-time"}) {
        for (const char* const value : {"-1", "x", "99999999999"}) {
            const support::ProgramResult result = support::runProgram({OWBCIMOMD, option, value});
            EXPECT_EQ(2, result.exitCode) << option << " " << value;
            EXPECT_EQ(0u, result.err.find(std::string("owbcimomd: command line: ")));
            EXPECT_NE(std::string::npos, result.err.find(option));
        }
    }
}
