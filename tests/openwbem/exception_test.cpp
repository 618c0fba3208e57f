#include "OW_CIMDateTime.hpp"
#include "OW_CIMErrorException.hpp"
#include "OW_CIMException.hpp"
#include "OW_CIMValueCast.hpp"
#include "OW_DateTime.hpp"
#include "OW_EnumerationException.hpp"
#include "OW_Exception.hpp"
#include "OW_HTTPException.hpp"
#include "OW_HTTPUtils.hpp"
#include "OW_IOException.hpp"
#include "OW_NULLValueException.hpp"
#include "OW_NoSuchPropertyException.hpp"
#include "OW_SSLException.hpp"
#include "OW_Socket.hpp"
#include "OW_SocketAddress.hpp"
#include "OW_SocketException.hpp"
#include "OW_String.hpp"
#include "OW_URL.hpp"
#include "OW_XMLParseException.hpp"

#include <cerrno>
#include <gtest/gtest.h>
#include <memory>
#include <sstream>
#include <string>
#include <type_traits>

namespace OpenWBEM {
namespace ExceptionIds {
static const int HomeMadeExceptionId = 4711;
} // namespace ExceptionIds
} // namespace OpenWBEM

namespace {

using namespace OpenWBEM;

OW_DECLARE_EXCEPTION(HomeMade)
OW_DEFINE_EXCEPTION_WITH_ID(HomeMade)
OW_DECLARE_EXCEPTION(Plain)
OW_DEFINE_EXCEPTION(Plain)

std::string textOf(const OpenWBEM::Exception& e) {
    std::ostringstream out;
    out << e;
    return out.str();
}

template <class Type>
void expectClass(const char* name, int id) {
    const Type e("file.cpp", 7, "message");
    EXPECT_STREQ(name, e.type());
    EXPECT_EQ(id, e.getSubClassId()) << name;
    EXPECT_EQ(-1, e.getErrorCode()) << name;
    EXPECT_STREQ("message", e.what());
    const std::unique_ptr<OpenWBEM::Exception> copy(e.clone());
    EXPECT_STREQ(name, copy->type());
    EXPECT_TRUE(dynamic_cast<const Type*>(copy.get())) << name;
}

TEST(Exception, ClassesHaveTheirNamesAndNumbers) {
    expectClass<CIMErrorException>("CIMErrorException", 2);
    expectClass<HTTPException>("HTTPException", 3);
    expectClass<XMLParseException>("XMLParseException", -1);
    expectClass<ValueCastException>("ValueCastException", 6);
    expectClass<UnknownHostException>("UnknownHostException", 9);
    expectClass<SocketAddressException>("SocketAddressException", 10);
    expectClass<SocketException>("SocketException", 11);
    expectClass<SocketTimeoutException>("SocketTimeoutException", 12);
    expectClass<DateTimeException>("DateTimeException", 17);
    expectClass<EnumerationException>("EnumerationException", 18);
    expectClass<IOException>("IOException", 22);
    expectClass<BadCIMSignatureException>("BadCIMSignatureException", 23);
    expectClass<NoSuchPropertyException>("NoSuchPropertyException", 26);
    expectClass<NULLValueException>("NULLValueException", 29);
    expectClass<OutOfBoundsException>("OutOfBoundsException", 31);
    expectClass<StringConversionException>("StringConversionException", 37);
    expectClass<MalformedURLException>("MalformedURLException", 42);
    expectClass<CIMDateTimeException>("CIMDateTimeException", 49);
    expectClass<SSLException>("SSLException", 51);
    expectClass<UnescapeCharForURLException>("UnescapeCharForURLException", 1002);
}

TEST(Exception, BadCIMSignatureIsAnIOException) {
    EXPECT_THROW(OW_THROW(BadCIMSignatureException, "x"), IOException);
}

TEST(Exception, ClassesMayBeDefinedByAgents) {
    expectClass<HomeMadeException>("HomeMadeException", 4711);
    expectClass<PlainException>("PlainException", -1);
}

TEST(Exception, HasTheFileAndLineOfTheThrow) {
    try {
        OW_THROW_ERR(IOException, "oops", 5);
    } catch (const OpenWBEM::Exception& e) {
        EXPECT_EQ(__LINE__ - 2, e.getLine());
        EXPECT_TRUE(String(e.getFile()).endsWith("exception_test.cpp"));
        EXPECT_EQ(5, e.getErrorCode());
        EXPECT_EQ(nullptr, e.getSubException());
    }
}

TEST(Exception, OwnsACopyOfItsCause) {
    try {
        try {
            OW_THROW(SocketException, "inner");
        } catch (const SocketException& e) {
            OW_THROW_SUBEX(IOException, "outer", e);
        }
    } catch (const IOException& e) {
        ASSERT_NE(nullptr, e.getSubException());
        EXPECT_STREQ("SocketException", e.getSubException()->type());
        EXPECT_STREQ("inner", e.getSubException()->getMessage());
    }
}

TEST(Exception, MayReportErrno) {
    try {
        errno = ENOENT;
        OW_THROW_ERRNO_MSG(IOException, "open");
    } catch (const IOException& e) {
        EXPECT_STREQ("open: 2(No such file or directory)", e.getMessage());
        EXPECT_EQ(-1, e.getErrorCode());
    }
}

TEST(Exception, IsPrintedWithItsCause) {
    const IOException inner("b.cpp", 2, "inner");
    EXPECT_EQ("a.cpp: 1 SocketException: outer <b.cpp: 2 IOException: inner>",
              textOf(SocketException("a.cpp", 1, "outer", -1, &inner)));
    EXPECT_EQ("[no file]: [no line] IOException: [no message]", textOf(IOException(nullptr, 0, nullptr)));
}

/** An exception class without overrides. */
class Nameless : public OpenWBEM::Exception {
public:
    Nameless(const char* message, int errorCode)
        : OpenWBEM::Exception("nameless.cpp", 7, message, errorCode, nullptr, 9) {}
    using OpenWBEM::Exception::swap;
};

TEST(Exception, WithoutOverridesHasTheTypeOfTheBase) {
    const Nameless e("message", 3);
    EXPECT_STREQ("Exception", e.type());
    const std::unique_ptr<OpenWBEM::Exception> copy(e.clone());
    EXPECT_EQ("nameless.cpp: 7 Exception: message", textOf(*copy));
    EXPECT_EQ(3, copy->getErrorCode());
    EXPECT_EQ(9, copy->getSubClassId());
}

TEST(Exception, SwapsAllMembers) {
    Nameless a("a", 1);
    Nameless b("b", 2);
    a.swap(b);
    EXPECT_STREQ("b", a.getMessage());
    EXPECT_EQ(2, a.getErrorCode());
    EXPECT_STREQ("a", b.getMessage());
    EXPECT_EQ(1, b.getErrorCode());
}

TEST(Exception, IsCopiedWithoutThrowing) {
    EXPECT_TRUE(std::is_nothrow_copy_constructible_v<IOException>);
    EXPECT_TRUE(std::is_nothrow_copy_constructible_v<CIMException>);
    EXPECT_TRUE(std::is_nothrow_copy_assignable_v<CIMException>);
}

TEST(CIMException, JoinsTheTextOfItsCodeAndTheDescription) {
    const struct {
        CIMException::ErrNoType code;
        const char* description;
        const char* message;
    } examples[] = {
        {CIMException::FAILED, nullptr, "general error"},
        {CIMException::FAILED, "", "general error"},
        {CIMException::NOT_FOUND, "gone", "requested object could not be found (gone)"},
        {CIMException::FAILED, "general error: x", "general error: x"},
        {static_cast<CIMException::ErrNoType>(99), "x", "unknown error (x)"},
    };
    for (const auto& [code, description, message] : examples) {
        const CIMException e("file.cpp", 7, code, description);
        EXPECT_STREQ(message, e.getMessage());
        EXPECT_STREQ(message, e.what());
        EXPECT_STREQ(description, e.getDescription());
        EXPECT_EQ(code, e.getErrNo());
        EXPECT_EQ(code, e.getErrorCode());
        EXPECT_EQ(1, e.getSubClassId());
        EXPECT_STREQ("CIMException", e.type());
    }
}

TEST(CIMException, MayChangeItsCode) {
    CIMException e("file.cpp", 7, CIMException::FAILED);
    e.setErrNo(CIMException::NOT_FOUND);
    EXPECT_EQ(CIMException::NOT_FOUND, e.getErrNo());
    EXPECT_STREQ("requested object could not be found", e.getMessage());
}

TEST(CIMException, DescriptionDefaultsToTheMessageOfTheCause) {
    const IOException inner("b.cpp", 2, "inner");
    try {
        OW_THROWCIM_SUBEX(CIMException::FAILED, inner);
    } catch (const CIMException& e) {
        EXPECT_STREQ("general error (inner)", e.getMessage());
        EXPECT_STREQ("IOException", e.getSubException()->type());
    }
    try {
        OW_THROWCIMMSG_SUBEX(CIMException::FAILED, "outer", inner);
    } catch (const CIMException& e) {
        EXPECT_STREQ("general error (outer)", e.getMessage());
        const std::unique_ptr<OpenWBEM::Exception> copy(e.clone());
        EXPECT_STREQ("inner", copy->getSubException()->getMessage());
    }
}

TEST(Exception, LimitsTheLengthOfItsTexts) {
    const std::string longest(64 * 1024, 'x');
    EXPECT_EQ(longest, IOException("f", 1, longest.c_str()).getMessage());
    EXPECT_EQ(longest, IOException("f", 1, (longest + "y").c_str()).getMessage());
    const CIMException e("f", 1, CIMException::FAILED, (longest + "y").c_str());
    EXPECT_EQ(longest, e.getDescription());
    EXPECT_EQ("general error (" + longest.substr(15), e.getMessage());
}

} // namespace
