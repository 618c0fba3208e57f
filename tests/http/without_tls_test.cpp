// A build without OpenSSL: NoTls.cpp, TlsOptions.cpp and what includes these headers compile without
// HTTP_HAS_TLS.
#include "http/Server.hpp"
#include "http/Stream.hpp"
#include "http/TlsOptions.hpp"

#include <CLI/CLI.hpp>
#include <boost/asio/buffer.hpp>
#include <boost/asio/io_context.hpp>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <sys/socket.h>
#include <unistd.h>

using namespace http;

static_assert(!isBuiltWithTls);
static_assert(std::is_invocable_v<decltype(&Server::listenWithTlsOn), Server&, const NetworkAddress&>);
static_assert(std::is_invocable_v<decltype(&Server::setTls), Server&, std::shared_ptr<TlsContext>>);

namespace {

/** The error of a command line. */
std::string errorOf(const std::string& arguments) {
    CLI::App app;
    TlsOptions options;
    addTlsOptions(app, options, 5989);
    try {
        app.parse(arguments);
        return std::string();
    } catch (const CLI::ParseError& e) {
        return e.what();
    }
}

} // namespace

TEST(WithoutTls, RejectsTheOptions) {
    EXPECT_EQ("--tls-listen: built without TLS",
              errorOf("--tls-listen 127.0.0.1:5989 --tls-cert cert.pem --tls-key key.pem"));
    EXPECT_EQ("--tls-listen: built without TLS", errorOf("--tls-listen invalid"));
    EXPECT_EQ("--tls-cert requires --tls-key", errorOf("--tls-cert cert.pem"));
    EXPECT_EQ("", errorOf(""));
}

TEST(WithoutTls, ReadsNoFiles) {
    try {
        readTlsFiles({"cert.pem", "key.pem"});
        FAIL();
    } catch (const std::runtime_error& e) {
        EXPECT_STREQ("built without TLS", e.what());
    }
}

TEST(WithoutTls, AStreamCarriesBytesUntilItIsClosed) {
    int ends[2];
    ASSERT_EQ(0, ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends));
    boost::asio::io_context io{1};
    Stream stream(Stream::Socket(io, {AF_UNIX, 0}, ends[0]), nullptr);
    EXPECT_FALSE(stream.hasTls());
    EXPECT_TRUE(stream.isReady());
    EXPECT_EQ("", stream.subject());
    const std::string bytes = "bytes";
    stream.async_write_some(boost::asio::buffer(bytes), [](const boost::system::error_code&, std::size_t) {});
    io.run();
    char received[8];
    EXPECT_EQ(5, ::read(ends[1], received, sizeof received));
    bool isCancelled = false;
    stream.async_read_some(boost::asio::buffer(received),
                           [&](const boost::system::error_code& error, std::size_t) {
                               isCancelled = error == boost::asio::error::operation_aborted;
                           });
    stream.cancel();
    io.restart();
    io.run();
    EXPECT_TRUE(isCancelled);
    stream.close(nullptr);
    EXPECT_EQ(0, ::read(ends[1], received, sizeof received));
    ::close(ends[1]);
}
