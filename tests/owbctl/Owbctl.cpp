#include "Owbctl.hpp"

namespace owbctl_test {

support::ProgramResult owbctl(const std::vector<std::string>& arguments) {
    std::vector<std::string> command{OWBCTL};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return support::runProgram(command);
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

support::Step accepted() {
    return support::Step::answer(support::wire::chunkedReply(std::string(1, '\0')));
}

std::vector<support::Step> writeOf(const support::Step& before, const support::Step& after) {
    return {before, before, accepted(), after};
}

std::string deadUrl() {
    const support::TempDir directory;
    return support::urlOf(directory.file("missing"));
}

support::ProgramResult owbctlAt(const std::vector<support::Step>& answers,
                                const std::vector<std::string>& arguments) {
    const support::ScriptedPeer peer(answers);
    std::vector<std::string> all{"--url", peer.url()};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return owbctl(all);
}

support::ProgramResult get(const std::vector<support::Step>& answers,
                           const std::vector<std::string>& arguments) {
    std::vector<std::string> all{"get"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return owbctlAt(answers, all);
}

} // namespace owbctl_test
