// SPDX-License-Identifier: MIT
#include "toolkit/drawing/VectorImage.h"

#include <cstdio>
#include <filesystem>
#include <utility>

#include "toolkit/base/Bundle.h"

namespace VSTGUI {

namespace {

constexpr std::size_t kLongestPath = 512;        // bytes
constexpr long kLargestFile = 16 * 1024 * 1024;  // bytes; an image of the panel has a few thousand

struct FileCloser {
  void operator()(std::FILE* file) const noexcept { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

std::filesystem::path findImage(const CResourceDescription& description) {
  if (!gBundleRef) return {};
  const bool numbered = description.type == CResourceDescription::kIntegerType;
  return gBundleRef->findResource(description.lookupName("svg"), numbered ? "svg" : "");
}

// Bytes up to the end; -1 for what has no end, as a folder, or is too large to be an image.
long sizeOf(std::FILE* file) {
  if (std::fseek(file, 0, SEEK_END) != 0) return -1;
  const long size = std::ftell(file);
  std::rewind(file);
  return size <= kLargestFile ? size : -1;
}

}  // namespace

IPlatformSVG* IPlatformSVG::create() { return new CGSVG; }

bool CGSVG::load(const CResourceDescription& description) {
  size = 0;
  const std::filesystem::path path = findImage(description);
  if (path.empty() || path.native().size() > kLongestPath) return false;
  const File file(std::fopen(path.c_str(), "rb"));
  if (!file) return false;
  const long bytes = sizeOf(file.get());
  if (bytes < 0) return false;
  const auto count = static_cast<std::size_t>(bytes);
  auto buffer = std::make_unique<char[]>(count + 1);
  if (std::fread(buffer.get(), 1, count, file.get()) != count) return false;
  text = std::move(buffer);
  size = static_cast<std::int32_t>(bytes);
  return true;
}

CTarnelSVG::CTarnelSVG(const CResourceDescription& description) {
  const auto image = Counted<IPlatformSVG>::adopt(IPlatformSVG::create());
  if (image->load(description)) platformSVG = image;
}

IPlatformSVG* CTarnelSVG::getPlatformSVG() const {
  if (platformSVG) platformSVG->remember();
  return platformSVG;
}

}  // namespace VSTGUI
