#include "Owbctl.hpp"

namespace owbctl_test {

support::ProgramResult owbctl(const std::vector<std::string>& arguments) {
    std::vector<std::string> words{OWBCTL};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return support::runProgram(words);
}

support::ProgramResult shell(const std::string& line) {
    return support::runProgram({"/bin/sh", "-c", "OWBCTL='" OWBCTL "'\nexport OWBCTL\n" + line});
}

support::Step instances(const std::vector<std::string>& each) {
    return support::Step::answer(support::wire::chunkedReply(support::wire::enumeration(each)));
}

support::Step instanceOf(const std::vector<std::string>& properties) {
    return instances({support::wire::instance("QAV_Any", properties)});
}

std::string deadUrl() {
    const support::TempDir folder;
    return support::urlOf(folder.file("nobody"));
}

support::ProgramResult get(const std::vector<support::Step>& answers,
                           const std::vector<std::string>& arguments) {
    const support::ScriptedPeer peer(answers);
    std::vector<std::string> all{"--url", peer.url(), "get"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return owbctl(all);
}

} // namespace owbctl_test
