// Short ways to the test plug-in.
#pragma once

#include <memory>

#include "host/Plugin.h"
#include "tests/host/ForeignPlugin.h"

inline foreign::Report& reportOf(const modrift::host::Plugin& plugin) {
  const VstIntPtr answer = plugin.dispatch(effVendorSpecific, foreign::askReport);
  return *reinterpret_cast<foreign::Report*>(answer);  // NOLINT(performance-no-int-to-ptr)
}

inline std::shared_ptr<const modrift::host::Module> load(const char* path) {
  return std::make_shared<modrift::host::Module>(path);
}
