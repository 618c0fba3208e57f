// The switch file of the trace, the name of its log, and the cleaning of texts. The trace reads the switch
// file once per process; the target includes the source to read each input.
#include "OWB_Debug.cpp" // NOLINT(bugprone-suspicious-include): see above

#include "support/Directory.hpp"

#include <string>
#include <unistd.h>
#include <vector>

namespace {

void check(bool is) {
    if (!is)
        std::abort();
}

/** Cleaning in place and to another buffer must give the same result: no surrounding blanks, no quotes. */
void clean(const std::string& text) {
    std::vector<char> source(text.c_str(), text.c_str() + text.size() + 1);
    std::vector<char> target(source.size());
    char* const inPlace = source.front() == '\0' ? nullptr : source.data();
    check(owbStringClean(source.data(), target.data()) == target.data());
    check(owbStringClean(source.data(), nullptr) == inPlace);
    const std::string result = target.data();
    check(result == source.data());
    check(result.find('"') == std::string::npos);
    check(result.empty() || (!isSpace(result.front()) && !isSpace(result.back())));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::Directory directory;
    const std::string text(reinterpret_cast<const char*>(data), size);
    clean(text);
    // The log is in this directory or at a path that does not exist.
    check(::chdir(directory.path().c_str()) == 0);
    directory.write("vdxDebug", text.find('/') == std::string::npos ? text : "none/" + text);
    char name[256] = "";
    check(readSwitch(name, sizeof name));
    append(name, text.c_str());
    OWB_Debug(const_cast<char*>("file"), const_cast<char*>("function"), 1, const_cast<char*>("%s\n"),
              text.c_str());
    for (const auto& entry : std::filesystem::directory_iterator(directory.path()))
        std::filesystem::remove_all(entry.path());
    return 0;
}
