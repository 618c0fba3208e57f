#ifndef TESTS_SUPPORT_MADE_UP_LOCALE_HPP
#define TESTS_SUPPORT_MADE_UP_LOCALE_HPP
#include "support/Child.hpp"
#include "support/Program.hpp"
#include "support/TempDir.hpp"

#include <clocale>
#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <string>

namespace support {

/** Runs the body in a child whose locale is made for it; false where the sources of locales are missing. */
inline bool runInLocale(const std::string& name, const std::string& charset,
                        const std::function<void()>& body) {
    const TempDir folder;
    const std::string locale = name + "." + charset;
    if (runProgram({"/usr/bin/localedef", "-i", name, "-f", charset, folder.file(locale)}).exitCode > 1)
        return false;
    inChild(folder.path(), [&] {
        ::setenv("LOCPATH", folder.path().c_str(), 1);
        ASSERT_NE(nullptr, std::setlocale(LC_ALL, locale.c_str())) << locale;
        body();
    });
    return true;
}

} // namespace support
#endif
