// Runs a fuzz target over saved inputs (files, or every file of a folder):
// the seed corpus and the cases of past findings, in every native test run.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

void RunFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::vector<uint8_t> bytes{std::istreambuf_iterator<char>(file),
                                     std::istreambuf_iterator<char>()};
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

}  // namespace

int main(int argc, char** argv) {
    size_t inputs = 0;
    for (int i = 1; i < argc; ++i) {
        const std::filesystem::path path(argv[i]);
        if (std::filesystem::is_directory(path)) {
            for (const auto& entry : std::filesystem::directory_iterator(path)) {
                RunFile(entry.path());
                ++inputs;
            }
        } else {
            RunFile(path);
            ++inputs;
        }
    }
    std::printf("%zu inputs replayed\n", inputs);
    return inputs > 0 ? 0 : 1;
}
