// SPDX-License-Identifier: MIT
// Short ways to the test plug-in.
#pragma once

#include <memory>

#include "host/Plugin.h"
#include "tests/host/ForeignPlugin.h"

inline ForeignPlugin& foreign(const modrift::host::Plugin& plugin) {
  return *static_cast<ForeignPlugin*>(plugin.record().object);
}

extern "C" AEffect* VSTCALLBACK linkedForeignEntry(audioMasterCallback host);

// The test plug-in that is part of the test program.
inline std::shared_ptr<const modrift::host::Module> linked() {
  return std::make_shared<modrift::host::Module>(linkedForeignEntry, "/a folder/Linked Gain");
}

inline std::shared_ptr<const modrift::host::Module> load(const char* path) {
  return std::make_shared<modrift::host::Module>(path);
}
