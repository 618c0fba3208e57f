// An agent's locale changes nothing. Each test is a process of its own, in a locale that is made for it.
#include "Clients.hpp"
#include "OW_CIMValue.hpp"
#include "OW_URL.hpp"
#include "support/Child.hpp"
#include "support/Program.hpp"

#include <cctype>
#include <clocale>
#include <cstdlib>
#include <functional>
#include <strings.h>

namespace {

/** Runs the body in a locale; false where locales cannot be made. */
bool runIn(const std::string& name, const std::string& charset, const std::function<void()>& body) {
    const support::TempDir folder;
    const std::string locale = name + "." + charset;
    if (support::runProgram({"/usr/bin/localedef", "-i", name, "-f", charset, folder.file(locale)}).exitCode >
        1)
        return false;
    support::inChild(folder.path(), [&] {
        ::setenv("LOCPATH", folder.path().c_str(), 1);
        ASSERT_NE(nullptr, std::setlocale(LC_ALL, locale.c_str())) << locale;
        body();
    });
    return true;
}

TEST(Locale, WithADecimalCommaChangesNoNumber) {
    if (!runIn("de_DE", "UTF-8", [] {
            ASSERT_STREQ(",", std::localeconv()->decimal_point);
            EXPECT_EQ("1.5", CIMValue(Real64(1.5)).toString());
            EXPECT_EQ("1.5", CIMValue(Real32(1.5F)).toString());
            EXPECT_EQ(1.5, String("1.5").toReal64());
        }))
        GTEST_SKIP() << "no sources of locales";
}

TEST(Locale, WithoutAnASCIIIChangesNoScheme) {
    if (!runIn("tr_TR", "ISO-8859-9", [] {
            ASSERT_NE('i', std::tolower('I'));
            EXPECT_EQ("owbinary.wbem", URL("OWBINARY.WBEM://localhost").scheme);
        }))
        GTEST_SKIP() << "no sources of locales";
}

TEST(Locale, WithoutAnASCIIIChangesNoChallenge) {
    if (!runIn("tr_TR", "UTF-8", [] {
            ASSERT_NE(0, ::strcasecmp("BASIC", "Basic"));
            ScriptedPeer peer(
                {Step::answerAndClose(wire::statusReply("401 Unauthorized", {"WWW-Authenticate: BASIC"})),
                 Step::answer(good)});
            CIMClient client(peer.url("owbinary.wbem", "user:secret@localhost").c_str(), "root/cimv2");
            EXPECT_EQ(1U, read(client));
        }))
        GTEST_SKIP() << "no sources of locales";
}

} // namespace
