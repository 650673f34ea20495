// Runs a target over every file of the given folders, once each: the ordinary builds' way to hold what the
// fuzzers have gathered.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" [[gnu::weak]] int LLVMFuzzerInitialize(int* argc, char*** argv);

int main(int argc, char** argv) {
  if (LLVMFuzzerInitialize != nullptr) LLVMFuzzerInitialize(&argc, &argv);
  std::vector<std::filesystem::path> inputs;
  for (int i = 1; i < argc; ++i) {
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(argv[i], error)) {
      if (entry.is_regular_file()) inputs.push_back(entry.path());
    }
    if (error) std::fprintf(stderr, "%s: %s\n", argv[i], error.message().c_str());
  }
  std::ranges::sort(inputs);
  for (const auto& path : inputs) {
    std::fprintf(stderr, "%s\n", path.c_str());  // the last one is the one that fails
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    const std::vector<std::uint8_t> input(bytes.begin(), bytes.end());
    LLVMFuzzerTestOneInput(input.data(), input.size());
  }
  std::printf("%zu inputs\n", inputs.size());
  return inputs.empty() ? 1 : 0;
}
