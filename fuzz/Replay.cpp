// Stands in for the fuzzer in ordinary test runs: the files of the given folders as they are, cut at every length up to
// a bound, and with random changes for about a second. The changes come in the same order on every machine; only how
// many there is time for differs.
#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <span>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t kSeed = 20260101;
constexpr auto kTime = std::chrono::milliseconds(1000);
constexpr long kMostRuns = 200000;
constexpr std::size_t kMostCuts = 4096;
constexpr int kMostChanges = 4;

void run(const Bytes& input) {
  // A copy of exactly this size, so that a read behind the end is one behind the allocation.
  const Bytes exact(input.begin(), input.end());
  LLVMFuzzerTestOneInput(exact.data(), exact.size());
}

std::vector<Bytes> readSeeds(std::span<char*> folders) {
  std::vector<std::filesystem::path> paths;
  for (const char* folder : folders) {
    for (const auto& entry : std::filesystem::directory_iterator(folder)) paths.push_back(entry.path());
  }
  std::sort(paths.begin(), paths.end());
  std::vector<Bytes> seeds;
  for (const auto& path : paths) {
    std::ifstream file(path, std::ios::binary);
    seeds.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }
  return seeds;
}

class Mutator {
 public:
  Bytes change(Bytes bytes) {
    for (int left = below(kMostChanges) + 1; left > 0; --left) changeOnce(bytes);
    return bytes;
  }
  int below(std::size_t n) { return static_cast<int>(random_() % n); }

 private:
  void changeOnce(Bytes& bytes) {
    const std::uint8_t odd[] = {0, 1, 0x7f, 0x80, 0xff, ',', '"', '\n', static_cast<std::uint8_t>(random_())};
    const std::uint8_t byte = odd[below(std::size(odd))];
    if (bytes.empty()) return bytes.push_back(byte);
    const auto at = bytes.begin() + below(bytes.size());
    const auto end = at + below(std::min<std::size_t>(static_cast<std::size_t>(bytes.end() - at), 64)) + 1;
    switch (below(5)) {
      case 0:
        *at = byte;
        break;
      case 1:
        *at = static_cast<std::uint8_t>(*at ^ (1 << below(8)));
        break;
      case 2:
        bytes.insert(at, byte);
        break;
      case 3:
        bytes.erase(at, end);
        break;
      default: {
        const Bytes copy(at, end);
        bytes.insert(bytes.begin() + below(bytes.size()), copy.begin(), copy.end());
      }
    }
  }

  std::mt19937 random_{kSeed};
};

long runMutations(const std::vector<Bytes>& seeds) {
  Mutator mutator;
  const auto end = std::chrono::steady_clock::now() + kTime;
  long runs = 0;
  for (; runs < kMostRuns && std::chrono::steady_clock::now() < end; ++runs) {
    run(mutator.change(seeds[static_cast<std::size_t>(mutator.below(seeds.size()))]));
  }
  return runs;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<Bytes> seeds = readSeeds(std::span(argv, static_cast<std::size_t>(argc)).subspan(1));
  if (seeds.empty()) {
    std::fprintf(stderr, "folders with seeds were expected as arguments\n");
    return 2;
  }
  for (const Bytes& seed : seeds) {
    for (std::size_t length = 0; length < std::min(seed.size(), kMostCuts); ++length) {
      run({seed.begin(), seed.begin() + static_cast<std::ptrdiff_t>(length)});
    }
    run(seed);
  }
  std::printf("seed %u: %zu files and %ld mutations of them\n", kSeed, seeds.size(), runMutations(seeds));
  return 0;
}
