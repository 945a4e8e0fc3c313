// Runs a fuzz target over saved inputs (files, or every file of a folder:
// the seed corpus and the cases of past findings), then over seeded random
// inputs, the same ones in every native test run.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "tests/native/TestImages.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int main(int argc, char** argv) {
    namespace fs = std::filesystem;
    std::vector<fs::path> files;
    for (int i = 1; i < argc; ++i) {
        if (fs::is_directory(argv[i]))
            files.insert(files.end(), fs::directory_iterator(argv[i]), fs::directory_iterator());
        else
            files.emplace_back(argv[i]);
    }
    std::vector<uint8_t> bytes;
    for (const fs::path& path : files) {
        std::ifstream file(path, std::ios::binary);
        bytes.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
        LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    }
    constexpr int kRandomInputs = 2000;
    Random random(1);
    for (int i = 0; i < kRandomInputs; ++i) {
        bytes.resize(random.Below(8192));
        for (uint8_t& b : bytes) b = static_cast<uint8_t>(random.Next());
        LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    }
    std::printf("%zu inputs replayed, %d random ones run\n", files.size(), kRandomInputs);
    return files.empty() ? 1 : 0;
}
