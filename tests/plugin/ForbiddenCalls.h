// SPDX-License-Identifier: MIT
// Counts what an audio thread must not do: this program's own malloc, mutexes, waits and streams stand in front of the
// system's.
#pragma once

#include <string>

namespace forbidden {

// From construction to destruction, forbidden calls of this thread are counted.
class Watch {
 public:
  Watch();
  ~Watch();
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;
};

// Calls so far, and the name of the last one.
int count();
std::string last();
void reset();

}  // namespace forbidden
