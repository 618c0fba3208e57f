// The library is independent of the locale. Each test runs in its own process, in a locale compiled for it.
#include "Clients.hpp"
#include "OW_CIMValue.hpp"
#include "OW_URL.hpp"
#include "support/FakeLocale.hpp"

#include <cctype>
#include <clocale>

namespace {

TEST(Locale, WithADecimalCommaDoesNotAffectNumbers) {
    if (!support::runInFakeLocale("de_DE", "UTF-8", [] {
            ASSERT_STREQ(",", std::localeconv()->decimal_point);
            EXPECT_EQ("1.5", CIMValue(Real64(1.5)).toString());
            EXPECT_EQ("1.5", CIMValue(Real32(1.5F)).toString());
            EXPECT_EQ(1.5, String("1.5").toReal64());
        }))
        GTEST_SKIP() << "no locale sources";
}

TEST(Locale, WithTurkishCaseDoesNotAffectSchemes) {
    if (!support::runInFakeLocale("tr_TR", "ISO-8859-9", [] {
            ASSERT_NE('i', std::tolower('I'));
            EXPECT_EQ("owbinary.wbem", URL("OWBINARY.WBEM://localhost").scheme);
        }))
        GTEST_SKIP() << "no locale sources";
}

TEST(Locale, WithTurkishCaseDoesNotAffectChallenges) {
    if (!support::runInFakeLocale("tr_TR", "UTF-8", [] {
            ASSERT_EQ('I', std::tolower('I')) << "no capital i";
            ScriptedPeer peer(
                {Step::answerAndClose(wire::statusReply("401 Unauthorized", {"WWW-Authenticate: BASIC"})),
                 Step::answer(good)});
            CIMClient client(peer.url("owbinary.wbem", "user:secret@localhost").c_str(), "root/cimv2");
            EXPECT_EQ(1U, read(client));
        }))
        GTEST_SKIP() << "no locale sources";
}

} // namespace
