// owbcimom-passwd: sets the passwords of the users who may log in to owbcimomd.

#include "passwd/NewPassword.hpp"
#include "users/PasswordHash.hpp"
#include "users/UsersFile.hpp"

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>

namespace {

using cimom::HashMethod;
using cimom::Users;

struct Options {
    std::string file;
    std::string user;
    bool remove = false;
    bool isReadOnly = false;
    std::string method = "yescrypt";
};

void remove(const Options& options) {
    cimom::changeUsers(options.file, [&options](Users& users) {
        if (!users.remove(options.user))
            throw std::runtime_error(options.file + ": no such user: \"" + options.user + "\"");
    });
}

void set(const Options& options) {
    // Throws for an invalid name before the program asks for the password.
    Users().set(options.user, std::string());
    const HashMethod method = options.method == "sha512" ? HashMethod::sha512 : HashMethod::yescrypt;
    const std::string hash = cimom::hashOf(cimom::newPassword(), method);
    cimom::changeUsers(options.file, [&](Users& users) {
        users.set(options.user, hash);
        if (options.isReadOnly)
            users.restrict(options.user);
    });
}

void define(CLI::App& app, Options& options) {
    app.add_option("FILE", options.file, "File of the users; created if missing")->required();
    app.add_option("USER", options.user, "Name of the user")->required();
    auto* const remove = app.add_flag("--delete", options.remove, "Delete the user");
    app.add_flag("--read-only", options.isReadOnly, "Let the user read, but not write")->excludes(remove);
    app.add_option("--method", options.method, "How the password is hashed")
        ->check(CLI::IsMember({"yescrypt", "sha512"}))
        ->capture_default_str()
        ->excludes(remove);
    app.set_version_flag("--version", "owbcimom-passwd " OWBCIMOMD_VERSION);
}

} // namespace

// NOLINTNEXTLINE(bugprone-exception-escape): outside the try block only std::bad_alloc can be thrown
int main(int argc, char** argv) {
    Options options;
    CLI::App app(
        "Sets the password of a user who may log in to owbcimomd. Asks for it on the terminal, or reads "
        "a line of standard input.",
        "owbcimom-passwd");
    define(app, options);
    try {
        app.parse(argc, argv);
        options.remove ? remove(options) : set(options);
        return 0;
    } catch (const CLI::Success& e) {
        return app.exit(e);
    } catch (const CLI::ParseError& e) {
        std::cerr << "owbcimom-passwd: command line: " << e.what() << std::endl;
        return 2;
    } catch (const std::exception& e) {
        std::cerr << "owbcimom-passwd: " << e.what() << std::endl;
        return 1;
    }
}
