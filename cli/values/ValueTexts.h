// SPDX-License-Identifier: MIT
// From the texts that a plug-in shows back to the values that it shows them for.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "cli/values/TypedValue.h"
#include "host/OfflineRunner.h"
#include "host/Plugin.h"

namespace modrift::cli {

// The value from 0 to 1 for which `textAt` gives `wanted`, or a sentence part saying what was expected instead. Blanks
// round texts do not count; tried in this order: the exact text, in any case, the same number with the same unit. Where
// a text stands for a range of values, the end of the parameter that the range touches, else its middle; a text that
// stands for several ranges means none of them.
[[nodiscard]] std::variant<float, std::string> valueOfText(const std::function<std::string(float)>& textAt,
                                                           std::string_view wanted);

// Turns typed values into numbers one by one, each in the state that those before have made. The texts come from an
// instance of its own, made with the first text, so that the plug-in itself hears nothing of the search.
class ValueFinder {
 public:
  // `like` is asked for its state when that instance is made, and must live as long.
  explicit ValueFinder(const host::Plugin& like) : like_(like) {}

  // The value for the parameter of that number and name, or what was expected instead.
  [[nodiscard]] std::variant<float, std::string> take(VstInt32 index, const std::string& name, const TypedValue& typed);

 private:
  void makeScratch();
  void set(VstInt32 index, float value);
  [[nodiscard]] std::string textAt(VstInt32 index, float value) const;
  [[nodiscard]] std::variant<float, std::string> search(VstInt32 index, const std::string& text) const;

  const host::Plugin& like_;
  std::unique_ptr<host::Plugin> scratch_;
  std::vector<host::ParameterChange> before_;                      // what was set before there was a scratch instance
  std::map<std::pair<VstInt32, std::string>, float> foundBefore_;  // may have changed its meaning since
};

}  // namespace modrift::cli
