// The file of users: read, change, write, read again.
#include "users/Users.hpp"

#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>

using cimom::Users;

namespace {

/** Users must be able to read its own text; an exception terminates the program. */
void requireReadable(const Users& users) noexcept {
    const std::string text = users.text();
    if (Users(text).text() != text)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    try {
        Users users(text);
        requireReadable(users);
        // The name of a user in the text, if there is one.
        const std::string name = text.substr(0, text.find(':'));
        users.set(name, "$6$salt$" + std::string(86, 'x'));
        requireReadable(users);
        if (!users.remove(name))
            std::abort();
        requireReadable(users);
    } catch (const std::runtime_error&) {
    }
    return 0;
}
