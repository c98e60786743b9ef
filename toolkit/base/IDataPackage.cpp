// SPDX-License-Identifier: MIT
#include "toolkit/base/IDataPackage.h"

namespace VSTGUI {

std::uint32_t IDataPackage::getDataSize(std::uint32_t index) {
  const void* buffer = nullptr;
  Type type = kError;
  return getData(index, buffer, type);
}

IDataPackage::Type IDataPackage::getDataType(std::uint32_t index) {
  const void* buffer = nullptr;
  Type type = kError;
  getData(index, buffer, type);
  return type;
}

void CDropSource::add(const void* data, std::uint32_t size, Type type) {
  const auto* const first = static_cast<const char*>(data);
  Item item{first ? std::vector<char>(first, first + size) : std::vector<char>(), type};
  item.bytes.push_back(0);
  items_.push_back(std::move(item));
}

std::uint32_t CDropSource::getData(std::uint32_t index, const void*& buffer, Type& type) {
  if (index >= items_.size()) {
    buffer = nullptr;
    type = kError;
    return 0;
  }
  buffer = items_[index].bytes.data();
  type = items_[index].type;
  return static_cast<std::uint32_t>(items_[index].bytes.size() - 1);
}

}  // namespace VSTGUI
