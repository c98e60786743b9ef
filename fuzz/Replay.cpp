// SPDX-License-Identifier: MIT
// The entry of a fuzz target under an ordinary compiler: replays the files of the folders that it is given, then
// mutated ones until twenty thousand are through or a second and a half is over. The same inputs, in the same order, on
// every run.
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;
using Input = std::vector<std::uint8_t>;

std::vector<Input> readCorpus(int count, char** folders) {
  std::vector<fs::path> paths;
  for (int i = 0; i < count; ++i) {
    if (!fs::exists(folders[i])) continue;  // not every target has both kept and made inputs
    for (const auto& entry : fs::recursive_directory_iterator(folders[i]))
      if (entry.is_regular_file()) paths.push_back(entry.path());
  }
  std::ranges::sort(paths);
  std::vector<Input> corpus;
  for (const fs::path& path : paths) {
    std::ifstream file(path, std::ios::binary);
    corpus.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }
  return corpus;
}

// A copy of exactly this size, so that a read behind the end is one behind the allocation.
void run(const Input& input) {
  const Input exact(input.begin(), input.end());
  LLVMFuzzerTestOneInput(exact.data(), exact.size());
}

// Overwritten bytes, most of them of the kind that makes numbers odd; now and then another length.
void mutate(Input& input, std::mt19937& random) {
  constexpr std::uint8_t kOdd[] = {0x00, 0x01, 0x7f, 0x80, 0xff, 0x3f, 0xf0, 0x41, ',', '"', '\n'};
  for (auto changes = random() % 64; changes > 0 && !input.empty(); --changes) {
    const std::size_t start = random() % input.size();
    const std::size_t end = std::min<std::size_t>(start + random() % 9, input.size());
    const auto value = random() % 2 ? kOdd[random() % std::size(kOdd)] : static_cast<std::uint8_t>(random());
    for (std::size_t i = start; i < end; ++i) input[i] = value;
  }
  if (random() % 8 == 0) input.resize(random() % (input.size() + 64));
}

}  // namespace

int main(int argc, char** argv) {
  constexpr int kMutated = 20000;
  constexpr std::chrono::milliseconds kLongest{1500};
  const std::vector<Input> corpus = readCorpus(argc - 1, argv + 1);
  if (corpus.empty()) {
    std::fputs("no corpus: a folder with inputs was expected\n", stderr);
    return 1;
  }
  for (const Input& input : corpus) run(input);
  std::mt19937 random(1);
  const auto end = std::chrono::steady_clock::now() + kLongest;
  int turn = 0;
  for (; turn < kMutated && std::chrono::steady_clock::now() < end; ++turn) {
    Input input = corpus[random() % corpus.size()];
    mutate(input, random);
    run(input);
  }
  std::printf("%zu files, %d mutated inputs\n", corpus.size(), turn);
}
