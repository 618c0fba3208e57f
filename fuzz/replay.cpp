// Runs a fuzz target over every file of some folders: replay FOLDER...
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
            // Memory of exactly this size, so that the sanitizer sees a step beyond it.
            const auto copy = std::make_unique<std::uint8_t[]>(bytes.size());
            bytes.copy(reinterpret_cast<char*>(copy.get()), bytes.size());
            LLVMFuzzerTestOneInput(copy.get(), bytes.size());
            ++files;
        }
    }
    std::cout << files << " files\n";
    return files > 0 ? 0 : 1;
}
