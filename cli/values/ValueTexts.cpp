// SPDX-License-Identifier: MIT
#include "cli/values/ValueTexts.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <fmt/core.h>
#include <optional>

#include "cli/values/NearTexts.h"
#include "host/Transport.h"

namespace modrift::cli {
namespace {

// Finer than the steps of any knob; what lies closer together are numbers, which are found between two others.
constexpr std::size_t kSteps = 4096;
constexpr std::size_t kMostRangesShown = 4;

using TextAt = std::function<std::string(float)>;
using Matches = std::function<bool(std::string_view)>;

float valueAt(std::size_t step) { return static_cast<float>(step) / static_cast<float>(kSteps); }

bool isSameNumber(std::string_view text, std::string_view wanted) {
  const auto a = splitQuantity(text), b = splitQuantity(wanted);
  return a && b && a->number == b->number && a->hasUnit(b->unit);
}

struct Range {
  float first, last;  // values
};

std::vector<Range> rangesWhere(const std::vector<std::string>& texts, const Matches& matches) {
  std::vector<Range> ranges;
  bool inside = false;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const bool isMatch = matches(texts[i]);
    if (isMatch && !inside) ranges.push_back({valueAt(i), valueAt(i)});
    if (isMatch) ranges.back().last = valueAt(i);
    inside = isMatch;
  }
  return ranges;
}

float chosen(const Range& range) {
  const bool touchesFirst = range.first == 0.0f, touchesLast = range.last == 1.0f;
  if (touchesFirst != touchesLast) return touchesFirst ? 0.0f : 1.0f;
  return range.first + (range.last - range.first) * 0.5f;
}

// The last value on the way from `inside` to `outside` at which the text still matches.
float edge(const TextAt& textAt, const Matches& matches, float inside, float outside) {
  for (;;) {
    const float middle = inside + (outside - inside) * 0.5f;
    if (middle == inside || middle == outside) return inside;
    (matches(textAt(middle)) ? inside : outside) = middle;
  }
}

// Halves the way between two values whose numbers enclose the wanted one until a text between them matches.
std::optional<Range> rangeBetween(const TextAt& textAt, const Quantity& wanted, const Matches& matches, float low,
                                  float high, bool rising) {
  const float first = low, last = high;
  for (;;) {
    const float middle = low + (high - low) * 0.5f;
    if (middle == low || middle == high) return std::nullopt;
    const std::string text = textAt(middle);
    if (matches(text)) return Range{edge(textAt, matches, middle, first), edge(textAt, matches, middle, last)};
    const auto quantity = splitQuantity(text);
    if (!quantity || !quantity->hasUnit(wanted.unit)) return std::nullopt;
    ((quantity->number < wanted.number) == rising ? low : high) = middle;
  }
}

std::vector<Range> rangesBetween(const TextAt& textAt, const std::vector<std::string>& texts, std::string_view typed,
                                 const Matches& matches) {
  std::vector<Range> ranges;
  const auto wanted = splitQuantity(typed);
  if (!wanted) return ranges;
  std::optional<Quantity> before;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    auto here = splitQuantity(texts[i]);
    if (here && !here->hasUnit(wanted->unit)) here.reset();
    const bool encloses = here && before && (before->number < wanted->number) != (here->number < wanted->number);
    if (encloses) {
      const bool rising = before->number < here->number;
      if (const auto found = rangeBetween(textAt, *wanted, matches, valueAt(i - 1), valueAt(i), rising))
        ranges.push_back(*found);
    }
    before = here;
  }
  return ranges;
}

std::vector<Range> rangesOf(const TextAt& textAt, const std::vector<std::string>& texts, std::string_view wanted) {
  const Matches kWays[] = {[=](std::string_view text) { return text == wanted; },
                           [=](std::string_view text) { return equalInAnyCase(text, wanted); },
                           [=](std::string_view text) { return isSameNumber(text, wanted); }};
  for (const Matches& matches : kWays)
    if (auto ranges = rangesWhere(texts, matches); !ranges.empty()) return ranges;
  return rangesBetween(textAt, texts, wanted, kWays[2]);
}

std::string listed(const std::vector<Range>& ranges) {
  std::string list;
  for (std::size_t i = 0; i < std::min(ranges.size(), kMostRangesShown); ++i)
    list += fmt::format("{}{:.4g} to {:.4g}", i == 0 ? "" : ", ", ranges[i].first, ranges[i].last);
  return ranges.size() > kMostRangesShown ? list + ", ..." : list;
}

}  // namespace

std::variant<float, std::string> valueOfText(const TextAt& textAt, std::string_view wanted) {
  wanted = trimmed(wanted);
  const auto trimmedAt = [&textAt](float value) { return std::string(trimmed(textAt(value))); };
  std::vector<std::string> texts;
  for (std::size_t i = 0; i <= kSteps; ++i) texts.push_back(trimmedAt(valueAt(i)));
  const std::vector<Range> ranges = rangesOf(trimmedAt, texts, wanted);
  if (ranges.size() == 1) return chosen(ranges.front());
  if (!ranges.empty())
    return fmt::format("a number was expected, as '{}' stands for several ranges: {}", wanted, listed(ranges));
  std::vector<std::string> distinct;
  for (std::string& text : texts)
    if (!text.empty() && std::find(distinct.rbegin(), distinct.rend(), text) == distinct.rend())
      distinct.push_back(std::move(text));
  if (distinct.empty()) return fmt::format("a number was expected, not '{}'", wanted);
  return fmt::format("a number or a text that the plug-in shows was expected, not '{}'; near it are {}", wanted,
                     nearTexts(wanted, distinct));
}

std::variant<float, std::string> ValueFinder::take(VstInt32 index, const std::string& name, const TypedValue& typed) {
  std::variant<float, std::string> found = 0.0f;
  if (typed.number) {
    found = *typed.number;
  } else if (trimmed(name).empty()) {  // a command, which a search would carry out
    return fmt::format("a number was expected, not '{}'", typed.text);
  } else {
    makeScratch();
    found = search(index, typed.text);
  }
  const float* const value = std::get_if<float>(&found);
  if (value == nullptr) return fmt::format("{}: {}", trimmed(name), std::get<std::string>(found));
  set(index, *value);
  if (!typed.number) foundBefore_[{index, typed.text}] = *value;
  return found;
}

std::variant<float, std::string> ValueFinder::search(VstInt32 index, const std::string& text) const {
  const auto at = [this, index](float value) { return textAt(index, value); };
  if (const auto before = foundBefore_.find({index, text}); before != foundBefore_.end()) {
    if (equalInAnyCase(trimmed(at(before->second)), text)) return before->second;
  }
  auto found = valueOfText(at, text);
  const std::string label(trimmed(scratch_->parameterLabel(index)));  // "25 %" where the text is "25"
  const bool hasLabel = !label.empty() && text.ends_with(label) && text.size() > label.size();
  if (std::holds_alternative<float>(found) || !hasLabel) return found;
  auto without = valueOfText(at, std::string_view(text).substr(0, text.size() - label.size()));
  return std::holds_alternative<float>(without) ? without : found;
}

// Some plug-ins' settings count only once audio has run.
void ValueFinder::makeScratch() {
  if (scratch_) return;
  constexpr double kSampleRateHz = 44100.0;
  constexpr VstInt32 kFrames = 64;
  scratch_ = std::make_unique<host::Plugin>(like_.module());
  const bool hasChunks = (like_.record().flags & effFlagsProgramChunks) != 0;
  const std::vector<std::byte> chunk = hasChunks ? like_.chunk(host::ChunkKind::program) : std::vector<std::byte>();
  if (!chunk.empty()) {
    scratch_->setChunk(host::ChunkKind::program, chunk);
  } else {
    for (VstInt32 i = 0; i < like_.parameterCount(); ++i) scratch_->setParameter(i, like_.parameter(i));
  }
  scratch_->setSampleRate(kSampleRateHz);
  scratch_->setBlockSize(kFrames);
  scratch_->activate();
  scratch_->setTime(host::Transport({.playing = false}, kSampleRateHz).time(), 0);
  std::vector<float> silence(kFrames), result(kFrames);
  std::vector<float*> inputs(static_cast<std::size_t>(scratch_->inputCount()), silence.data());
  std::vector<float*> outputs(static_cast<std::size_t>(scratch_->outputCount()), result.data());
  scratch_->process(inputs.data(), outputs.data(), kFrames);
  for (const host::ParameterChange& change : before_) scratch_->setUnlistedParameter(change.parameter, change.value);
}

void ValueFinder::set(VstInt32 index, float value) {
  if (scratch_) {
    scratch_->setUnlistedParameter(index, value);
  } else {
    before_.push_back({0, index, value});
  }
}

std::string ValueFinder::textAt(VstInt32 index, float value) const {
  scratch_->setUnlistedParameter(index, value);
  return scratch_->unlistedDisplay(index);
}

}  // namespace modrift::cli
