#include "users/PasswordHash.hpp"

#include <cerrno>
#include <crypt.h>
#include <regex>
#include <stdexcept>
#include <system_error>

namespace cimom {
namespace {

/** The result of crypt(3); empty if the password or the setting is invalid. */
std::string crypted(const std::string& password, const std::string& setting) {
    if (password.find('\0') != std::string::npos) // crypt(3) would ignore the rest
        return std::string();
    crypt_data data{};
    const char* const hash = ::crypt_rn(password.c_str(), setting.c_str(), &data, sizeof data);
    return hash ? hash : "";
}

std::string newSetting(HashMethod method) {
    const char* const prefix = method == HashMethod::sha512 ? "$6$" : "$y$";
    const unsigned long defaultCost = 0;
    char setting[CRYPT_GENSALT_OUTPUT_SIZE];
    if (!::crypt_gensalt_rn(prefix, defaultCost, nullptr, 0, setting, sizeof setting))
        throw std::system_error(errno, std::generic_category(), "cannot make a salt");
    return setting;
}

} // namespace

std::string hashOf(const std::string& password, HashMethod method) {
    if (password.size() > maximumPassword)
        throw std::runtime_error("password: longer than " + std::to_string(maximumPassword) + " bytes");
    std::string hash = crypted(password, newSetting(method));
    if (hash.empty())
        throw std::runtime_error("password: cannot be hashed");
    return hash;
}

std::string faultOfHash(const std::string& text) {
    const bool isYescrypt = text.compare(0, 3, "$y$") == 0;
    if (!isYescrypt && text.compare(0, 3, "$6$") != 0)
        return "is of neither yescrypt ($y$) nor sha512crypt ($6$)";
    // The forms of crypt(5), with the characters of a salt that all implementations accept.
    static const std::regex yescrypt(R"(\$y\$[./A-Za-z0-9]+\$[./A-Za-z0-9]{1,86}\$[./A-Za-z0-9]{43})");
    static const std::regex sha512(
        R"(\$6\$(rounds=[1-9][0-9]{0,8}\$)?[./A-Za-z0-9]{1,16}\$[./A-Za-z0-9]{86})");
    const bool isWhole =
        text.size() < CRYPT_OUTPUT_SIZE && std::regex_match(text, isYescrypt ? yescrypt : sha512);
    return isWhole && ::crypt_checksalt(text.c_str()) == CRYPT_SALT_OK ? "" : "is malformed";
}

bool isPasswordOf(const std::string& hash, const std::string& password) {
    return !hash.empty() && crypted(password, hash) == hash;
}

} // namespace cimom
