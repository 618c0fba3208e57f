#include "HostTree.hpp"

#include "Collected.hpp"
#include "OW_CIMProperty.hpp"
#include "providers/Providers.hpp"
#include "system/AnswerPending.hpp"

#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <sys/stat.h>

using namespace OpenWBEM;

boost::asio::io_context& loop() {
    static boost::asio::io_context io(1);
    return io;
}

void HostTree::setModificationTime(const std::string& path, long seconds, long nanoseconds) const {
    const std::timespec time = {seconds, nanoseconds};
    const std::timespec times[] = {time, time};
    ASSERT_EQ(0, ::utimensat(AT_FDCWD, realPath(path).c_str(), times, 0));
}

TimeZone::TimeZone(const char* zone) {
    ::setenv("TZ", zone, 1);
    ::tzset();
}

TimeZone::~TimeZone() {
    ::unsetenv("TZ");
    ::tzset();
}

cimom::Provider providerOf(const char* className, const cimom::Host& host) {
    for (cimom::Provider& provider : cimom::makeProviders(host, loop())) {
        if (provider.declaration->name == std::string(className))
            return provider;
    }
    throw std::logic_error(std::string("no provider of ") + className);
}

std::vector<CIMInstance> allInstances(const cimom::Provider& provider) {
    try {
        return collected(*provider.instances());
    } catch (const cimom::AnswerPending& answer) {
        bool hasAnswered = false;
        answer.wait([&hasAnswered] { hasAnswered = true; });
        loop().restart();
        loop().run();
        EXPECT_TRUE(hasAnswered);
        return collected(*provider.instances());
    }
}

CIMInstance onlyInstance(const cimom::Provider& provider) {
    const std::vector<CIMInstance> all = allInstances(provider);
    EXPECT_EQ(1u, all.size());
    return all.empty() ? CIMInstance() : all.front();
}

std::string text(const CIMInstance& instance, const char* property) {
    const CIMProperty found = instance.getProperty(property);
    return found ? found.getValue().toString().c_str() : "(missing)";
}

std::string names(const CIMPropertyArray& properties) {
    std::string result;
    for (const CIMProperty& property : properties)
        result += (result.empty() ? "" : " ") + std::string(property.getName().c_str());
    return result;
}
