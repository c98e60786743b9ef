// Short ways to the test plug-in.
#pragma once

#include <memory>

#include "host/Plugin.h"
#include "tests/host/ForeignPlugin.h"

inline foreign::Report& reportOf(const modrift::host::Plugin& plugin) {
  const VstIntPtr answer = plugin.dispatch(effVendorSpecific, foreign::askReport);
  return *reinterpret_cast<foreign::Report*>(answer);  // NOLINT(performance-no-int-to-ptr)
}

extern "C" AEffect* VSTCALLBACK linkedForeignEntry(audioMasterCallback host);

// The test plug-in that is part of the test program.
inline std::shared_ptr<const modrift::host::Module> linked() {
  return std::make_shared<modrift::host::Module>(linkedForeignEntry, "/a folder/Linked Gain");
}

inline std::shared_ptr<const modrift::host::Module> load(const char* path) {
  return std::make_shared<modrift::host::Module>(path);
}
