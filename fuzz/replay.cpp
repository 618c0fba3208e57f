// Runs a fuzz target on every file of some directories: replay DIRECTORY...
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
    int files = 0;
    for (int i = 1; i < argc; ++i) {
        for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
            std::ifstream in(entry.path(), std::ios::binary);
            const std::string bytes{std::istreambuf_iterator<char>(in), {}};
            // Exactly sized memory, so that the sanitizer detects overruns.
            const auto copy = std::make_unique<std::uint8_t[]>(bytes.size());
            bytes.copy(reinterpret_cast<char*>(copy.get()), bytes.size());
            LLVMFuzzerTestOneInput(copy.get(), bytes.size());
            ++files;
        }
    }
    std::cout << files << " files\n";
    return files > 0 ? 0 : 1;
}
