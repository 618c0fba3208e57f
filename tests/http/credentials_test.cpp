#include "http/Credentials.hpp"

#include <gtest/gtest.h>

using namespace http;

namespace {

std::string read(const std::string& authorization) {
    const std::optional<Credentials> found = basicCredentials(authorization);
    return found ? "'" + found->user + "' '" + found->password + "'" : "none";
}

} // namespace

TEST(Credentials, AreANameAndAPasswordInBase64) {
    EXPECT_EQ("'Aladdin' 'open sesame'", read("Basic QWxhZGRpbjpvcGVuIHNlc2FtZQ==")); // RFC 7617
    EXPECT_EQ("'user' 'pw'", read("Basic dXNlcjpwdw=="));
    EXPECT_EQ("'user' 'pwd'", read("Basic dXNlcjpwd2Q="));
    EXPECT_EQ("'user' 'pass'", read("Basic dXNlcjpwYXNz")) << "a group that is whole";
    EXPECT_EQ("'user' 'pw'", read("Basic dXNlcjpwdw")) << "without the padding";
}

TEST(Credentials, ThePasswordMayHoldColonsAndBeEmpty) {
    EXPECT_EQ("'a' 'b:c'", read("Basic YTpiOmM="));
    EXPECT_EQ("'a' ''", read("Basic YTo="));
}

TEST(Credentials, TheSchemeMayBeInAnyCase) {
    EXPECT_EQ("'user' 'pw'", read("  bASIC   dXNlcjpwdw==  "));
}

TEST(Credentials, OtherSchemesHaveNoCredentials) {
    EXPECT_EQ("none", read(""));
    EXPECT_EQ("none", read("OWLocal uid=\"0\""));
    EXPECT_EQ("none", read("Basics dXNlcjpwdw=="));
}

TEST(Credentials, MalformedCredentialsHaveAnEmptyName) {
    for (const char* const text :
         {"Basic", "Basic ", "Basic dXNlcg==", "Basic dXNlcjpw!w==", "Basic dXNlcjpwdw===",
          "Basic dXNlcjpwdw==x", "Basic dXNlcjpwdw== dXNlcjpwdw==", "Basic YTpiAGM="})
        EXPECT_EQ("'' ''", read(text)) << text;
}
