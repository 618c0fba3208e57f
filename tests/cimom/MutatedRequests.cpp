#include "MutatedRequests.hpp"

#include "openwbem/Record.hpp"

#include <set>

std::vector<std::string> recordedRequests() {
    std::set<std::string> all;
    std::set<std::string> bodies;
    for (const record::Conversation& conversation : record::conversations()) {
        for (const std::string& request : record::splitReplies(conversation.sent())) {
            const bool isLogin = request.find("Authorization: ") != std::string::npos &&
                                 request.find("uid=\"0\"") == std::string::npos;
            if (bodies.insert(record::bodyOf(request)).second || isLogin)
                all.insert(request);
        }
    }
    return std::vector<std::string>(all.begin(), all.end());
}

std::string mutated(std::string bytes, Dice& dice) {
    for (std::size_t flips = 1 + dice.below(3); flips > 0; --flips) {
        char& byte = bytes[dice.below(bytes.size())];
        byte = static_cast<char>(byte ^ (1 << dice.below(8)));
    }
    return bytes;
}
