// Included before and after the client library's headers: the second time declares more.
#include "owb.h"

#include "OW_CIMClient.hpp"
#include "OW_Exception.hpp"
#include "OW_URL.hpp"

#include "owb.h"

#include "TraceLog.hpp"

#include <gtest/gtest.h>
#include <string>

namespace {

const char defaultUrl[] = "owbinary.wbem://localhost:%2ftmp%2fOpenWBEM_UDS";
const char otherUrl[] = "owbinary.wbem://localhost:%2ftmp%2fother";

TEST(Url, IsTheDefaultUntilOneIsSet) {
    TraceLog trace;
    trace.run([] {
        EXPECT_EQ(nullptr, owbUrl_p);
        EXPECT_STREQ(defaultUrl, OWB_URLGet());
        EXPECT_EQ(1, OWB_URLSet(nullptr));
        EXPECT_STREQ(defaultUrl, OWB_URLGet());
    });
    EXPECT_EQ(Lines{}, trace.lines());
}

TEST(Url, IsACopyOfTheArgument) {
    TraceLog trace;
    trace.run([] {
        char url[] = "a";
        EXPECT_EQ(1, OWB_URLSet(url));
        url[0] = 'b';
        EXPECT_STREQ("a", OWB_URLGet());
        EXPECT_EQ(owbUrl_p, OWB_URLGet());
        EXPECT_EQ(1, OWB_URLSet(nullptr));
        EXPECT_STREQ("a", OWB_URLGet());
        EXPECT_EQ(1, OWB_URLSet("c"));
        EXPECT_STREQ("c", OWB_URLGet());
    });
    EXPECT_EQ((Lines{"../../owb/src/OWB_getGroup.cpp:OWB_URLSet:149: Set URL: 'a'",
                     "../../owb/src/OWB_getGroup.cpp:OWB_URLSet:149: Set URL: 'c'"}),
              trace.lines());
}

TEST(Url, MayBeSetToItself) {
    TraceLog trace;
    trace.run([] {
        OWB_URLSet(otherUrl);
        OWB_URLSet(OWB_URLGet());
        EXPECT_STREQ(otherUrl, OWB_URLGet());
    });
}

TEST(Url, MayBeSetToAPartOfItself) {
    TraceLog trace;
    trace.run([] {
        OWB_URLSet("http://host");
        OWB_URLSet(OWB_URLGet() + 7);
        EXPECT_STREQ("host", OWB_URLGet());
        OWB_URLSet(OWB_URLGet() + 4);
        EXPECT_STREQ("", OWB_URLGet());
    });
}

TEST(Connect, UsesTheUrlThatAnAgentAssignedToOwbUrl) {
    TraceLog trace;
    trace.run([] {
        OWB_URLSet("owbinary.wbem://");
        char own[] = "owbinary.wbem://localhost:%2ftmp%2fown";
        char* const set = owbUrl_p;
        owbUrl_p = own;
        EXPECT_NE(nullptr, OWB_connect(0));
        owbUrl_p = set;
    });
    EXPECT_EQ("../../owb/src/OWB_getGroup.cpp:OWB_connect:206: new connection, URL: "
              "owbinary.wbem://localhost:%2ftmp%2fown namespace: /root/cimv2",
              trace.lines().back());
}

TEST(Connect, CreatesOneClientAndReturnsItAgain) {
    TraceLog trace;
    trace.run([] {
        OpenWBEM::CIMClient* const client = OWB_connect(0);
        EXPECT_NE(nullptr, client);
        EXPECT_EQ(client, OWB_connect(0));
        EXPECT_EQ("/root/cimv2", std::string(client->getNameSpace().c_str()));
    });
    EXPECT_EQ((Lines{std::string("../../owb/src/OWB_getGroup.cpp:OWB_connect:206: new connection, URL: ") +
                         defaultUrl + " namespace: /root/cimv2",
                     "../../owb/src/OWB_getGroup.cpp:OWB_connect:211: use existing connection"}),
              trace.lines());
}

TEST(Connect, WithKillAndNoClientCreatesOneWithoutTracingAKill) {
    TraceLog trace;
    trace.run([] { EXPECT_NE(nullptr, OWB_connect(1)); });
    EXPECT_EQ(Lines{std::string("206: new connection, URL: ") + defaultUrl + " namespace: /root/cimv2"},
              trace.linesOf("OWB_connect"));
}

TEST(Connect, WithKillReplacesTheClientAndUsesTheNewUrl) {
    TraceLog trace;
    trace.run([] {
        OWB_connect(0);
        OWB_URLSet(otherUrl);
        OWB_connect(0);
        OWB_connect(1);
        OWB_connect(0);
    });
    EXPECT_EQ((Lines{std::string("206: new connection, URL: ") + defaultUrl + " namespace: /root/cimv2",
                     "211: use existing connection", "190: kill",
                     std::string("206: new connection, URL: ") + otherUrl + " namespace: /root/cimv2",
                     "211: use existing connection"}),
              trace.linesOf("OWB_connect"));
}

TEST(Connect, PassesTheExceptionOfTheConstructorAndTriesAgainNextTime) {
    TraceLog trace;
    trace.run([] {
        OWB_URLSet("owbinary.wbem://");
        EXPECT_THROW(OWB_connect(0), OpenWBEM::MalformedURLException);
        EXPECT_THROW(OWB_connect(0), OpenWBEM::Exception)
            << "caught as its base, across the library's border";
        OWB_URLSet(otherUrl);
        EXPECT_NE(nullptr, OWB_connect(0));
    });
    EXPECT_EQ(3U, trace.linesOf("OWB_connect").size());
}

TEST(Connect, AfterAKillAndAFailedConstructionThereIsNoClient) {
    TraceLog trace;
    trace.run([] {
        OWB_connect(0);
        OWB_URLSet("owbinary.wbem://");
        EXPECT_THROW(OWB_connect(1), OpenWBEM::Exception);
        OWB_URLSet(otherUrl);
        OWB_connect(1);
    });
    EXPECT_EQ((Lines{std::string("206: new connection, URL: ") + defaultUrl + " namespace: /root/cimv2",
                     "190: kill", "206: new connection, URL: owbinary.wbem:// namespace: /root/cimv2",
                     std::string("206: new connection, URL: ") + otherUrl + " namespace: /root/cimv2"}),
              trace.linesOf("OWB_connect"));
}

TEST(Version, IsTheSameForAllArguments) {
    char date[4] = "abc";
    char time[4] = "def";
    EXPECT_STREQ("v1.12", OWB_version(nullptr, nullptr));
    EXPECT_STREQ("v1.12", OWB_version(date, nullptr));
    EXPECT_STREQ("v1.12", OWB_version(date, time));
    EXPECT_STREQ("abc", date) << "the arguments are not written through";
    EXPECT_STREQ("def", time);
}

} // namespace
