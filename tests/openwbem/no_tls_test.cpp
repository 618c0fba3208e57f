#include "Clients.hpp"

namespace {

TEST(Tls, IsRejectedInABuildWithoutTls) {
    for (const char* url :
         {"https://127.0.0.1", "owbinary.wbems://localhost:%2ftmp%2fx", "cimxml.wbems://localhost:owipc"})
        EXPECT_EQ("SSLException: built without TLS", messageOfConstruction(url)) << url;
}

} // namespace
