#ifndef TESTS_SUPPORT_FAKE_LOCALE_HPP
#define TESTS_SUPPORT_FAKE_LOCALE_HPP
#include "support/Child.hpp"
#include "support/Program.hpp"
#include "support/TempDir.hpp"

#include <clocale>
#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <string>

namespace support {

/** Compiles a locale and runs the body in a child that uses it. Returns false if localedef or its sources are
 * missing. */
inline bool runInFakeLocale(const std::string& name, const std::string& charset,
                            const std::function<void()>& body) {
    const TempDir directory;
    const std::string locale = name + "." + charset;
    if (runProgram({"/usr/bin/localedef", "-i", name, "-f", charset, directory.file(locale)}).exitCode > 1)
        return false;
    inChild(directory.path(), [&] {
        ::setenv("LOCPATH", directory.path().c_str(), 1);
        ASSERT_NE(nullptr, std::setlocale(LC_ALL, locale.c_str())) << locale;
        body();
    });
    return true;
}

} // namespace support
#endif
