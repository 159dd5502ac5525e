// Replaces libFuzzer in tests: runs a target on its kept inputs, so that past findings stay fixed
// with any compiler.
#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::filesystem::path> FilesIn(const char* folder) {
    const std::filesystem::directory_iterator entries(folder);
    std::vector<std::filesystem::path> files(begin(entries), end(entries));
    std::ranges::sort(files);
    return files;
}

std::vector<std::uint8_t> ContentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::filesystem::path> files =
        argc == 2 ? FilesIn(argv[1]) : std::vector<std::filesystem::path>();
    for (const std::filesystem::path& file : files) {
        std::cout << file.string()
                  << std::endl; // the last line names the input that ends the process
        const std::vector<std::uint8_t> content = ContentOf(file);
        LLVMFuzzerTestOneInput(content.data(), content.size());
    }
    return files.empty() ? 1 : 0;
}
