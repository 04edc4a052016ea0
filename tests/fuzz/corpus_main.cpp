// SPDX-License-Identifier: GPL-3.0-or-later
// Feeds a fuzzer's corpus, file after file, without the fuzzer: so its findings stay found wherever the
// tests run, with any compiler.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace tessel {

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

}  // namespace tessel

using namespace tessel;

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1]))
        paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    for (const auto& path : paths) {
        std::printf("%s\n", path.c_str());
        std::fflush(stdout);
        std::ifstream file(path, std::ios::binary);
        const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
    return paths.empty() ? 1 : 0;
}
