// SPDX-License-Identifier: MIT
// A plug-in is active for as long as this lives, by whichever road the end comes.
#pragma once

#include "host/Plugin.h"

namespace modrift::host {

class Activation {
 public:
  explicit Activation(Plugin& plugin) : plugin_(plugin) { plugin_.activate(); }  // throws Error
  ~Activation() {
    try {
      plugin_.deactivate();
    } catch (...) {
      return;  // the result so far, or the error on its way, is what the caller wants to hear of
    }
  }
  Activation(const Activation&) = delete;
  Activation& operator=(const Activation&) = delete;

 private:
  Plugin& plugin_;
};

}  // namespace modrift::host
