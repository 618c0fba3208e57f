#include "http/NetworkAddress.hpp"

#include "util/Descriptor.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdexcept>

using namespace http;

namespace {

std::string shown(const std::string& text) {
    const std::optional<NetworkAddress> address = networkAddress(text);
    return address ? textOf(*address) : "none";
}

} // namespace

TEST(NetworkAddress, ConsistsOfAnAddressAndAPort) {
    EXPECT_EQ("10.1.2.3:5988", shown("10.1.2.3:5988"));
    EXPECT_EQ("0.0.0.0:0", shown("0.0.0.0:0"));
    EXPECT_EQ("[::1]:65535", shown("[::1]:65535"));
    EXPECT_EQ("[2001:db8::5]:80", shown("[2001:DB8::0:5]:80"));
}

TEST(NetworkAddress, APortAloneMeansTheLoopbackAddress) {
    EXPECT_EQ("127.0.0.1:5988", shown("5988"));
    EXPECT_EQ("127.0.0.1:5988", shown(":5988"));
}

TEST(NetworkAddress, AnyOtherTextIsRejected) {
    for (const char* const text :
         {"", ":", "127.0.0.1", "127.0.0.1:", "127.0.0.1:65536", "127.0.0.1:-1", "127.0.0.1:x",
          "localhost:80", "::1:80", "[::1]", "[::1]80", "[127.0.0.1]:80", "127.0.0.1:80 ", "[]:80", "[:80"})
        EXPECT_EQ("none", shown(text)) << text;
}

TEST(NetworkSocket, ListensAtTheAddressItReports) {
    const NetworkSocket socket = listenOn(*networkAddress("127.0.0.1:0"));
    const util::Descriptor closing(socket.descriptor);
    const std::string at = textOf(socket.at);
    EXPECT_EQ(0u, at.find("127.0.0.1:"));
    EXPECT_NE("127.0.0.1:0", at);
    EXPECT_EQ(FD_CLOEXEC, ::fcntl(socket.descriptor, F_GETFD));
    EXPECT_TRUE(::fcntl(socket.descriptor, F_GETFL) & O_NONBLOCK);
}

TEST(NetworkSocket, AnAddressInUseIsAnError) {
    const NetworkSocket first = listenOn(*networkAddress("127.0.0.1:0"));
    const util::Descriptor closing(first.descriptor);
    try {
        listenOn(first.at);
        FAIL() << "listens twice";
    } catch (const std::runtime_error& e) {
        EXPECT_EQ(textOf(first.at) + ": Address already in use", e.what());
    }
}

TEST(NetworkSocket, AnAddressOfAnotherHostIsAnError) {
    EXPECT_THROW(listenOn(*networkAddress("192.0.2.1:0")), std::runtime_error); // RFC 5737: no host has it
}

TEST(NetworkAddress, AnAddressAloneHasTheDefaultPort) {
    const auto text = [](const char* given) { return textOf(networkAddress(given, 5989).value()); };
    EXPECT_EQ("192.0.2.1:5989", text("192.0.2.1"));
    EXPECT_EQ("[::1]:5989", text("[::1]"));
    EXPECT_EQ("192.0.2.1:1", text("192.0.2.1:1"));
    EXPECT_EQ("127.0.0.1:2", text("2"));
    for (const char* const invalid : {"box", "1:2", "192.0.2.1:65536", "::1"})
        EXPECT_FALSE(networkAddress(invalid, 5989)) << invalid;
}

TEST(NetworkAddress, OnlyLoopbackAddressesAreLocal) {
    for (const char* const local : {"127.0.0.1:1", "127.9.9.9:1", "[::1]:1"})
        EXPECT_TRUE(isLoopback(networkAddress(local).value())) << local;
    for (const char* const remote : {"0.0.0.0:1", "[::]:1", "192.0.2.1:1", "126.255.255.255:1"})
        EXPECT_FALSE(isLoopback(networkAddress(remote).value())) << remote;
}
