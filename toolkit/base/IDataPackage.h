// SPDX-License-Identifier: MIT
// What a drag carries. [ui]
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "toolkit/base/CBaseObject.h"

namespace VSTGUI {

class IDataPackage : public CBaseObject {
 public:
  enum Type : std::int32_t { kError = -1, kFilePath = 0, kText = 1, kBinary = 2 };

  [[nodiscard]] virtual std::uint32_t getCount() = 0;
  // The size in bytes, without the zero byte that stands behind each item. `buffer` belongs to the package. An index
  // past the end gives 0, null and kError.
  virtual std::uint32_t getData(std::uint32_t index, const void*& buffer, Type& type) = 0;
  [[nodiscard]] std::uint32_t getDataSize(std::uint32_t index);
  [[nodiscard]] Type getDataType(std::uint32_t index);
};

// A package made by the program: to begin a drag with, or to hand on what came from outside.
class CDropSource : public IDataPackage {
 public:
  CDropSource() = default;
  // Copies the data. A file path is absolute and in the file system's bytes.
  CDropSource(const void* data, std::uint32_t size, Type type) { add(data, size, type); }
  void add(const void* data, std::uint32_t size, Type type);

  [[nodiscard]] std::uint32_t getCount() override { return static_cast<std::uint32_t>(items_.size()); }
  std::uint32_t getData(std::uint32_t index, const void*& buffer, Type& type) override;

  VSTGUI_CLASS_WITH_COPY(CDropSource, IDataPackage)

 private:
  struct Item {
    std::vector<char> bytes;  // with a zero behind the data
    Type type;
  };
  std::vector<Item> items_;
};

}  // namespace VSTGUI
