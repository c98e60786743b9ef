// SPDX-License-Identifier: MIT
// The folder that holds this plug-in's code and resources. [ui]
#pragma once

#include <filesystem>
#include <string_view>

#include "toolkit/base/CBaseObject.h"

namespace VSTGUI {

class Bundle : public CBaseObject {
 public:
  explicit Bundle(std::filesystem::path folder) : folder_(std::move(folder)) {}
  [[nodiscard]] const std::filesystem::path& getFolder() const { return folder_; }
  // A file of Contents/Resources: `name`, or `name` with "." and `type` behind it. A name that starts with "/" is a
  // path of its own. Empty if there is no such file.
  [[nodiscard]] std::filesystem::path findResource(std::string_view name, std::string_view type = {}) const;

 private:
  std::filesystem::path folder_;
};

// The bundle of the module that this code runs in: the folder three path components above the module. Null, with a line
// on stdout, if the path is too short. The caller owns the result.
[[nodiscard]] Bundle* GetPluginBundle();

// Where resources are looked up; null while there is no editor.
extern Bundle* gBundleRef;

// For each editor's life: the first one sets `gBundleRef`, the last one releases it.
void acquirePluginBundle();
void releasePluginBundle();

}  // namespace VSTGUI
