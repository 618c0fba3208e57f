// Clients on the network.
#include "StartedDaemon.hpp"

#include <csignal>

using namespace OpenWBEM;

namespace {

// The user "agent" with the password "secret".
const char* const hashes =
    "agent:$6$salt$egUxKNxDs8kPfh8iPMNcosMhb2eWah6d3R44JDm5Rj/j/XWR5E33QPd0YmHXoDHOIDR6kL5D3JcQcz0O8FHE00\n";

const std::string agent = "Authorization: Basic YWdlbnQ6c2VjcmV0\r\n"; // agent:secret

class Network : public StartedDaemon {
protected:
    std::string usersFile(const std::string& users = hashes) const {
        return directory().writeSecret("users", users);
    }
    void startWithUsers() { start({"--listen", "0", "--users", usersFile(), "--instances", systems(1)}); }

    /** A request that writes to the first instance of the site files. */
    static std::string writeRequest(const char* contact, const std::string& lines = "") {
        return xmlRequest(
            "ModifyInstance",
            "<IPARAMVALUE NAME=\"ModifiedInstance\"><VALUE.NAMEDINSTANCE><INSTANCENAME "
            "CLASSNAME=\"QAV_System\"><KEYBINDING NAME=\"Name\"><KEYVALUE>box-0</KEYVALUE></KEYBINDING>"
            "<KEYBINDING NAME=\"CreationClassName\"><KEYVALUE>QAV_System</KEYVALUE></KEYBINDING>"
            "</INSTANCENAME><INSTANCE CLASSNAME=\"QAV_System\"><PROPERTY NAME=\"PrimaryOwnerContact\" "
            "TYPE=\"string\"><VALUE>" +
                std::string(contact) + "</VALUE></PROPERTY></INSTANCE></VALUE.NAMEDINSTANCE></IPARAMVALUE>",
            lines);
    }
    std::string contact() const {
        const Reply reply = Client(socketPath()).exchange(httpRequest(enumerateBody("QAV_System")));
        for (const CIMInstance& instance : instancesIn(reply.body)) {
            if (instance.getPropertyValue("Name").toString() == "box-0")
                return instance.getPropertyValue("PrimaryOwnerContact").toString().c_str();
        }
        return "(no instance)";
    }
};

bool isDone(const Reply& reply) {
    return reply.status == 200 && reply.body.find("<IMETHODRESPONSE NAME=\"ModifyInstance\">"
                                                  "</IMETHODRESPONSE>") != std::string::npos;
}

} // namespace

TEST_F(Network, WithoutListenThereIsNoNetworkSocket) {
    start();
    EXPECT_EQ(0, port());
}

TEST_F(Network, EachSocketServesBothProtocols) {
    start({"--listen", "0", "--instances", systems(2)});
    Client onNetwork(port());
    Client local(socketPath());
    for (Client* client : {&onNetwork, &local}) {
        EXPECT_EQ(3u, count(*client));
        const Reply reply = client->exchange(
            xmlRequest("EnumerateInstanceNames",
                       "<IPARAMVALUE NAME=\"ClassName\"><CLASSNAME NAME=\"QAV_System\"/></IPARAMVALUE>"));
        EXPECT_TRUE(reply.hasLine("Content-Type: application/xml; charset=\"utf-8\""));
        EXPECT_NE(std::string::npos, reply.body.find("box-1"));
    }
}

TEST_F(Network, ItListensOnEachAddressOfTheCommandLine) {
    start({"--listen", "127.0.0.1:0", "--listen", "[::1]:0", "--instances", systems(0)});
    Client client(port(), AF_INET6);
    EXPECT_EQ(1u, count(client));
}

TEST_F(Network, AnAddressInUsePreventsTheStart) {
    start({"--listen", "0"});
    support::Daemon second({OWBCIMOMD, "--socket", directory().file("second"), "--state",
                            directory().file("state2"), "--listen", std::to_string(port())});
    EXPECT_EQ("owbcimomd: 127.0.0.1:" + std::to_string(port()) + ": Address already in use",
              second.nextErrorLine());
    EXPECT_EQ(1, second.wait());
}

TEST_F(Network, WithoutUsersNoClientOnTheNetworkMayWrite) {
    start({"--listen", "0", "--instances", systems(1)});
    for (const std::string& lines : {std::string(), agent}) {
        const Reply reply = Client(port()).exchange(writeRequest("me", lines));
        EXPECT_EQ(200u, reply.status);
        EXPECT_NE(std::string::npos, reply.body.find("<ERROR CODE=\"2\""));
    }
    EXPECT_EQ("(null)", contact());
}

TEST_F(Network, AWriteRequiresALogin) {
    startWithUsers();
    for (const char* const lines : {"", "Authorization: OWLocal uid=\"0\"\r\n"}) {
        Client client(port());
        EXPECT_EQ(2u, count(client)) << "but not before a read";
        const Reply reply = client.exchange(writeRequest("me", lines));
        EXPECT_EQ(401u, reply.status);
        EXPECT_EQ("Unauthorized: log in to write", reply.reason);
        EXPECT_TRUE(reply.hasLine("WWW-Authenticate: Basic realm=\"owbcimomd\""));
        EXPECT_TRUE(client.isClosedByPeer());
    }
    EXPECT_EQ("(null)", contact());
}

TEST_F(Network, AClientThatHasLoggedInMayWrite) {
    startWithUsers();
    EXPECT_TRUE(isDone(Client(port()).exchange(writeRequest("me", agent))));
    EXPECT_EQ("me", contact());
}

TEST_F(Network, ALoginIsCheckedOncePerConnection) {
    startWithUsers();
    Client client(port());
    EXPECT_TRUE(isDone(client.exchange(writeRequest("me", agent))));
    EXPECT_TRUE(isDone(client.exchange(writeRequest("you", agent))));
    EXPECT_EQ("you", contact());
    EXPECT_EQ(401u, client.exchange(writeRequest("him")).status);
    EXPECT_EQ("you", contact());
}

TEST_F(Network, AReloadOfTheUsersEndsLogins) {
    startWithUsers();
    Client client(port());
    EXPECT_TRUE(isDone(client.exchange(writeRequest("me", agent))));
    daemon().signal(SIGHUP);
    EXPECT_EQ("owbcimomd: reloaded the site's files", daemon().nextErrorLine());
    EXPECT_TRUE(isDone(client.exchange(writeRequest("you", agent)))) << "the user is still there";
    directory().write("users", "# no user\n");
    daemon().signal(SIGHUP);
    EXPECT_EQ("owbcimomd: reloaded the site's files", daemon().nextErrorLine());
    EXPECT_EQ(401u, client.exchange(writeRequest("him", agent)).status);
    EXPECT_EQ("you", contact());
}

TEST_F(Network, AWrongPasswordIsRefusedForReadsToo) {
    startWithUsers();
    for (const char* const wrong : {"YWdlbnQ6c2VjcmV1", "YWdlbnQ6", "bm9ib2R5OnNlY3JldA==", "rubbish!"}) {
        Client client(port());
        const std::string line = std::string("Authorization: Basic ") + wrong + "\r\n";
        const Reply reply =
            client.exchange(httpRequest(enumerateBody("QAV_System"), "TE: trailers\r\n" + line));
        EXPECT_EQ(401u, reply.status) << wrong;
        EXPECT_EQ("Unauthorized: wrong name or password", reply.reason);
        EXPECT_TRUE(client.isClosedByPeer());
        EXPECT_EQ(401u, Client(port()).exchange(writeRequest("me", line)).status);
    }
    EXPECT_EQ("(null)", contact());
}

TEST_F(Network, ALocalClientHasTheAccessOfItsUserDespiteItsAuthorization) {
    startWithUsers();
    EXPECT_TRUE(isDone(
        Client(socketPath()).exchange(writeRequest("me", "Authorization: Basic YWdlbnQ6c2VjcmV1\r\n"))));
    EXPECT_EQ("me", contact());
}

TEST_F(Network, WithRequireLoginAReadRequiresALogin) {
    start({"--listen", "0", "--require-login", "--users", usersFile(), "--instances", systems(1)});
    Client client(port());
    const Reply reply = client.exchange(httpRequest(enumerateBody("QAV_System")));
    EXPECT_EQ(401u, reply.status);
    EXPECT_EQ("Unauthorized: log in to read", reply.reason);
    EXPECT_TRUE(reply.hasLine("WWW-Authenticate: Basic realm=\"owbcimomd\""));
    EXPECT_EQ(401u, Client(port()).exchange(xmlRequest("EnumerateClassNames", "")).status);
    EXPECT_EQ(401u, Client(port()).exchange(writeRequest("me")).status);
}

TEST_F(Network, WithRequireLoginAClientThatHasLoggedInMayRead) {
    start({"--listen", "0", "--require-login", "--users", usersFile(), "--instances", systems(1)});
    Client client(port());
    const std::string request = httpRequest(enumerateBody("QAV_System"), "TE: trailers\r\n" + agent);
    EXPECT_EQ(2u, instancesIn(client.exchange(request).body).size());
    EXPECT_EQ(2u, instancesIn(client.exchange(request).body).size());
    EXPECT_TRUE(isDone(client.exchange(writeRequest("me", agent))));
}

TEST_F(Network, WithRequireLoginALocalClientReadsWithoutALogin) {
    start({"--listen", "0", "--require-login", "--users", usersFile(), "--instances", systems(1)});
    Client local(socketPath());
    EXPECT_EQ(2u, count(local));
}

TEST_F(Network, RequireLoginRequiresUsers) {
    const support::ProgramResult result =
        support::runProgram({OWBCIMOMD, "--socket", socketPath(), "--listen", "0", "--require-login"});
    EXPECT_EQ(2, result.exitCode);
    EXPECT_EQ("owbcimomd: command line: --require-login requires --users\n", result.err);
}

TEST_F(Network, AReadOnlyUserMayReadButNotWrite) {
    std::string users = hashes;
    users.insert(users.size() - 1, ":read-only");
    start({"--listen", "0", "--require-login", "--users", usersFile(users), "--instances", systems(1)});
    Client client(port());
    const std::string request = httpRequest(enumerateBody("QAV_System"), "TE: trailers\r\n" + agent);
    EXPECT_EQ(2u, instancesIn(client.exchange(request).body).size());
    const Reply reply = client.exchange(writeRequest("me", agent));
    EXPECT_EQ(200u, reply.status) << "a login would not help";
    EXPECT_NE(std::string::npos, reply.body.find("<ERROR CODE=\"2\""));
    EXPECT_EQ("(null)", contact());
}

TEST_F(Network, TooManyFailedLoginsBlockTheirAddress) {
    start({"--listen", "0", "--users", usersFile(), "--instances", systems(1)});
    const std::string wrong = "Authorization: Basic YWdlbnQ6c2VjcmV1\r\n";
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(401u, Client(port()).exchange(writeRequest("me", wrong)).status) << i;
    for (const std::string& lines : {wrong, agent}) {
        const Reply reply = Client(port()).exchange(writeRequest("me", lines));
        EXPECT_EQ(429u, reply.status);
        EXPECT_EQ("Too many requests: too many logins have failed", reply.reason);
        EXPECT_TRUE(reply.hasLine("Retry-After: 60"));
    }
    EXPECT_EQ("(null)", contact());
    Client client(port());
    EXPECT_EQ(2u, count(client)) << "a client without a login reads as before";
}

TEST_F(Network, AnInvalidUsersFilePreventsTheStart) {
    const std::string users = usersFile("agent\n");
    support::Daemon daemon(
        {OWBCIMOMD, "--socket", socketPath(), "--state", directory().file("state"), "--users", users});
    EXPECT_EQ(0u, daemon.nextErrorLine().find("owbcimomd: " + users + ":1: "));
    EXPECT_EQ(1, daemon.wait());
}
