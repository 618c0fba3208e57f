// When the client library loads OpenSSL. The agent loads the library at run time, and has no OpenSSL of its
// own.
#include "owb.h"

#include "TraceLog.hpp"
#include "support/AgentQueue.hpp"
#include "support/Certificates.hpp"
#include "support/Program.hpp"
#include "support/ScriptedPeer.hpp"

#include <algorithm>
#include <cstdlib>
#include <dlfcn.h>
#include <exception>
#include <filesystem>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using support::certificate;

const std::string module = OWB_TLS_MODULE;

bool hasMapped(const std::string& file) {
    return support::readFile("/proc/self/maps").find(file) != std::string::npos;
}

/** libowb.so, loaded as a plug-in of an agent loads it. It stays loaded: the leak checker would report what
 * its variables hold. */
class LoadedLibrary {
public:
    explicit LoadedLibrary(const std::string& path = OWB_LIBRARY)
        : m_handle(::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) {
        if (m_handle == nullptr)
            ADD_FAILURE() << ::dlerror();
    }

    void unload() const { EXPECT_EQ(0, ::dlclose(m_handle)); }

    /** The status of a read with a new client. */
    long readFrom(const std::string& url) const {
        function<decltype(OWB_URLSet)>("OWB_URLSet")(url.c_str());
        try {
            function<void*(unsigned char)>("_Z11OWB_connecth")(1);
        } catch (const std::exception&) { // there is no client; the read tries again
        }
        support::AgentQueue queue;
        return function<decltype(OWB_getGroup)>("OWB_getGroup")(4, queue.head());
    }

private:
    template <class Function>
    Function* function(const char* name) const {
        return reinterpret_cast<Function*>(::dlsym(m_handle, name));
    }

    void* const m_handle;
};

/** An object manager with and without TLS, and copies of the build's libraries. */
class TlsLoading : public testing::Test {
protected:
    TlsLoading()
        : m_manager({OWBCIMOMD, "--socket", m_directory.file("socket"), "--no-state", "--tls-listen",
                     "127.0.0.1:0", "--tls-cert", certificate("localhost.crt"), "--tls-key", key()}) {
        const std::string ready = m_manager.nextErrorLine();
        const std::size_t port = ready.rfind(':') + 1;
        tlsUrl = "https://localhost:" + ready.substr(port, ready.find(' ', port) - port);
        ::setenv("OWB_TLS_CA", certificate("ca.crt").c_str(), 1);
        ::unsetenv("OWB_TLS_VERIFY");
    }

    /** Copies the libraries into a subdirectory, which it returns. */
    std::string copyOfLibraries(bool withModule) const {
        const std::string copy = m_directory.file("lib");
        fs::create_directory(copy);
        const fs::path build = fs::path(OWB_LIBRARY).parent_path();
        for (const std::string& name : {std::string("libowb.so.1"), std::string("libowclient.so.1"),
                                        std::string("libSblimUtilities.so.0")})
            fs::copy_file(build / name, copy + "/" + name);
        if (withModule)
            fs::copy_file(build / module, copy + "/" + module);
        return copy;
    }

    const std::string& directory() const { return m_directory.path(); }
    std::string plainUrl() const { return support::urlOf(m_directory.file("socket")); }

    std::string tlsUrl;

private:
    std::string key() const {
        return m_directory.writeSecret("key", support::readFile(certificate("localhost.key")));
    }

    support::TempDir m_directory;
    support::Daemon m_manager;
};

TEST_F(TlsLoading, IsLeftToTheFirstTlsUrl) {
    runWithoutTrace([this] {
        const LoadedLibrary library;
        EXPECT_EQ(0, library.readFrom(plainUrl()));
        EXPECT_FALSE(hasMapped("libssl"));
        EXPECT_FALSE(hasMapped("libcrypto"));
        EXPECT_EQ(0, library.readFrom(tlsUrl));
        EXPECT_TRUE(hasMapped("libssl"));
    });
}

#ifndef __SANITIZE_ADDRESS__ // the leak checker reports what variables of the unloaded library held
TEST_F(TlsLoading, OutlivesTheLibraryWhichMayBeLoadedAgain) {
    runWithoutTrace([this] {
        for (int i = 0; i < 3; ++i) {
            const LoadedLibrary library;
            EXPECT_EQ(0, library.readFrom(tlsUrl));
            library.unload();
            EXPECT_FALSE(hasMapped("libowb.so"));
            EXPECT_TRUE(hasMapped("libssl"));
        }
    });
}
#endif

TEST_F(TlsLoading, WithoutTheModuleIsAnExceptionWithTheReason) {
    const std::string copy = copyOfLibraries(false);
    // Neither the current directory nor one that the environment names is searched.
    const TraceLog log;
    fs::copy_file(fs::path(OWB_LIBRARY).parent_path() / module, log.directory().file(module));
    ::setenv("LD_LIBRARY_PATH", log.directory().path().c_str(), 1);
    log.run([&] {
        const LoadedLibrary library(copy + "/libowb.so.1");
        EXPECT_EQ(OWB_EXCEPTION, library.readFrom(tlsUrl));
        EXPECT_EQ(0, library.readFrom(plainUrl()));
    });
    const std::string reason = "cannot load TLS: " + copy + "/" + module +
                               ": cannot open shared object file: No such file or directory";
    const Lines lines = log.lines();
    EXPECT_TRUE(std::any_of(lines.begin(), lines.end(), [&](const std::string& line) {
        return line.find(reason) != std::string::npos;
    })) << testing::PrintToString(lines);
}

TEST_F(TlsLoading, TriesAgainAfterAFailure) {
    const std::string copy = copyOfLibraries(false);
    runWithoutTrace([&] {
        const LoadedLibrary library(copy + "/libowb.so.1");
        EXPECT_EQ(OWB_EXCEPTION, library.readFrom(tlsUrl));
        fs::copy_file(fs::path(OWB_LIBRARY).parent_path() / module, copy + "/" + module);
        EXPECT_EQ(0, library.readFrom(tlsUrl));
    });
}

TEST_F(TlsLoading, FindsTheModuleOfALibraryThatARelativePathHasLoaded) {
    const std::string copy = copyOfLibraries(true);
    runWithoutTrace([&] {
        ASSERT_EQ(0, ::chdir(directory().c_str()));
        ASSERT_NE(nullptr, ::dlopen("lib/libowclient.so.1", RTLD_NOW | RTLD_LOCAL)) << ::dlerror();
        const LoadedLibrary library("lib/libowb.so.1");
        ASSERT_EQ(0, ::chdir("/"));
        EXPECT_EQ(0, library.readFrom(tlsUrl));
        EXPECT_TRUE(hasMapped(copy + "/" + module));
    });
}

TEST_F(TlsLoading, LetsTheLibraryTrace) {
    const TraceLog log;
    log.run([this] {
        ::setenv("OWB_TLS_VERIFY", "0", 1);
        EXPECT_EQ(0, LoadedLibrary().readFrom(tlsUrl));
    });
    const Lines lines = log.linesOf("startTls");
    ASSERT_EQ(1U, lines.size());
    EXPECT_NE(std::string::npos,
              lines[0].find("WARNING: certificate of localhost is not verified, OWB_TLS_VERIFY is 0"));
}

} // namespace
