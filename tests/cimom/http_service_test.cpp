// The rights of the client of a connection.
#include "LampProvider.hpp"
#include "XmlCalls.hpp"
#include "protocol/HttpService.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

using namespace cimom;

namespace {

http::Request requestOf(const std::string& body, const std::string& authorization = "") {
    http::Request request;
    request.method_string("POST");
    request.set("Content-Type", "application/xml");
    if (!authorization.empty())
        request.set("Authorization", authorization);
    request.body() = body;
    return request;
}

/** The error response to a request, its failure, or "done". */
std::string outcomeOf(http::Responder& responder, const http::Request& request) {
    const auto text = [](const http::ErrorResponse& error) {
        return std::to_string(error.status) + " " + error.detail;
    };
    if (const std::optional<http::ErrorResponse> error = responder.check(request))
        return text(*error);
    std::string outcome;
    responder.authorize(request, [&](const std::optional<http::ErrorResponse>& error) {
        if (error)
            outcome = text(*error);
    });
    if (!outcome.empty())
        return outcome;
    responder.answer(request, [&](const http::Answer& answer) {
        if (const auto* const error = std::get_if<http::ErrorResponse>(&answer))
            outcome = text(*error);
        else
            outcome = std::get<std::unique_ptr<http::Reply>>(answer)->failure().value_or("done");
    });
    return outcome;
}

const std::string modification = xml_calls::modification(xml_calls::lampName("red"), xml_calls::room);

class HttpServiceTest : public testing::Test {
protected:
    /** The outcome of a request of a new connection. */
    std::string outcome(const http::Peer& peer, const std::string& body,
                        const std::string& authorization = "") {
        return outcomeOf(*service.settings().makeResponder(peer), requestOf(body, authorization));
    }

    ObjectManager manager = lampManager({"red", "green"});
    boost::asio::io_context io{1};
    const Users users;
    PasswordCheck passwords{io, users};
    Logins logins{passwords};
    HttpService service{manager};
    HttpService serviceWithLogins{manager, &logins, true};
};

const http::Peer unknown{"unknown user"};
const http::Peer onNetwork{"127.0.0.1:4711", std::nullopt, "127.0.0.1"};

} // namespace

TEST_F(HttpServiceTest, ALocalClientMayDoWhatItsUserMay) {
    const http::Peer owner{"uid", ::geteuid()};
    EXPECT_EQ("done", outcome(owner, modification));
    const http::Peer other{"uid", 65533};
    EXPECT_EQ("done", outcome(other, xml_calls::good));
    EXPECT_EQ("2", outcome(other, modification).substr(0, 1));
}

TEST_F(HttpServiceTest, AClientWhoseUserIsUnknownMayOnlyRead) {
    EXPECT_EQ("done", outcome(unknown, xml_calls::good));
    EXPECT_EQ("2", outcome(unknown, modification).substr(0, 1));
}

TEST_F(HttpServiceTest, AClientOnTheNetworkMayOnlyReadWithoutLogins) {
    EXPECT_EQ("done", outcome(onNetwork, xml_calls::good));
    EXPECT_EQ("2", outcome(onNetwork, modification, "Basic dXNlcjpwdw==").substr(0, 1));
}

TEST_F(HttpServiceTest, AClientOnTheNetworkIsAskedToLogInIfThatIsRequired) {
    const auto responder = serviceWithLogins.settings().makeResponder(onNetwork);
    EXPECT_EQ("401 log in to read", outcomeOf(*responder, requestOf(xml_calls::good)));
    const auto local = serviceWithLogins.settings().makeResponder(unknown);
    EXPECT_EQ("done", outcomeOf(*local, requestOf(xml_calls::good)));
}

TEST_F(HttpServiceTest, TheSubjectOfACertificateThatIsAUserMayDoWhatTheUserMay) {
    const std::string hash = "$6$rounds=1000$roundsalt$0oYNoemtpMZIRX8om2kSVpAjw8P5P5pxiTVoFwI/"
                             "3GjmMXe09pWsdsNY1YwdaoWbiv6Yfs7mJF3vB5Gg0.9Dx/";
    const Users certified("# comment\nwriter:" + hash + "\nreader:" + hash + ":read-only\n");
    HttpService serviceWithCertificates{manager, &logins, true, &certified};
    const auto outcomeFor = [&](const std::string& subject, const std::string& body) {
        const http::Peer peer{"name", std::nullopt, "127.0.0.1", subject};
        return outcomeOf(*serviceWithCertificates.settings().makeResponder(peer), requestOf(body));
    };
    EXPECT_EQ("done", outcomeFor("writer", modification));
    EXPECT_EQ("done", outcomeFor("reader", xml_calls::good));
    EXPECT_EQ("2", outcomeFor("reader", modification).substr(0, 1));
    EXPECT_EQ("401 log in to read", outcomeFor("stranger", xml_calls::good));
    EXPECT_EQ("401 log in to read", outcomeFor("", xml_calls::good));
}

TEST_F(HttpServiceTest, ARequestWithoutABodyIsRejected) {
    EXPECT_EQ("400 The request has no body", outcome(unknown, ""));
}

TEST_F(HttpServiceTest, ARequestOfAnotherContentTypeIsRejected) {
    http::Request request = requestOf(xml_calls::good);
    request.set("Content-Type", "text/plain");
    EXPECT_EQ("415 Content-Type \"text/plain\" is not supported.",
              outcomeOf(*service.settings().makeResponder(unknown), request));
}
