// SPDX-License-Identifier: MIT
#include "presets/generator/Definitions.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <optional>
#include <set>

#include "presets/generator/Outline.h"

using namespace model;

namespace modrift::factory {
namespace {

// --- Lines

std::string inQuotes(std::string_view text) { return "\"" + std::string(text) + "\""; }

[[noreturn]] void fail(const std::string& message) { throw OutlineFault(message); }

// Gives `reader` each line that says something, without comment and outer blanks; a fault gets the line's number.
template <class Reader>
void readLines(const std::filesystem::path& file, std::string_view text, Reader& reader) {
  int number = 0;
  try {
    for (std::size_t start = 0; start < text.size();) {
      ++number;
      const std::size_t end = std::min(text.find('\n', start), text.size());
      std::string_view line = text.substr(start, end - start);
      start = end + 1;
      line = trimmed(line.substr(0, line.find('#')));
      if (!line.empty()) reader.take(line);
    }
    reader.end();
  } catch (const OutlineFault& fault) {
    throw DefinitionError(file.filename().string() + ":" + std::to_string(number) + ": " + fault.what());
  }
}

std::pair<std::string_view, std::string_view> splitAt(std::string_view text, char mark) {
  const std::size_t place = text.find(mark);
  if (place == std::string_view::npos) return {trimmed(text), {}};
  return {trimmed(text.substr(0, place)), trimmed(text.substr(place + 1))};
}

std::vector<std::string_view> wordsOf(std::string_view line) {
  std::vector<std::string_view> words;
  while (!line.empty()) {
    const auto [word, rest] = splitAt(line, ' ');
    words.push_back(word);
    line = rest;
  }
  return words;
}

// What follows `keyword` and a blank, if the line begins so.
std::optional<std::string_view> after(std::string_view keyword, std::string_view line) {
  if (!line.starts_with(keyword)) return std::nullopt;
  const std::string_view rest = line.substr(keyword.size());
  return rest.empty() || rest.front() == ' ' ? std::optional(trimmed(rest)) : std::nullopt;
}

double numberOf(std::string_view text) {
  const auto number = readNumber(text);
  if (!number) fail(inQuotes(text) + " is no number");
  return *number;
}

// Menu entries: readable, and safe as a file's name on every system.
std::string checkedName(std::string_view name, std::set<std::string, std::less<>>& taken) {
  constexpr std::size_t kLongest = 30;  // what the editor shows after a load
  if (name.empty() || name.size() > kLongest) fail("a name of 1 to 30 characters is expected");
  if (name.find_first_of("_/\\:*?\"<>|.") != std::string_view::npos)
    fail("the name has a character that is not allowed");
  if (!taken.insert(std::string(name)).second) fail(inQuotes(name) + " is there already");
  return std::string(name);
}

// --- Shapes

class ShapeReader {
 public:
  explicit ShapeReader(std::string folder) : folder_(std::move(folder)) {}

  void take(std::string_view line) {
    if (const auto name = after("shape", line)) return startShape(*name);
    if (name_.empty()) fail("a shape starts with a line \"shape NAME\"");
    const std::vector<std::string_view> words = wordsOf(line);
    if (line == "upside down") {
      needsOutline();
      outline_.turnUpsideDown();
    } else if (readNumber(words.front())) {
      addPoint(words);
    } else {
      addPattern(words);
    }
  }

  // The shape that ended, if there is one.
  void end() {
    if (name_.empty()) return;
    needsOutline();
    outline_.finish();
    shapes.push_back({folder_, name_, outline_.graphPoints()});
  }

  std::vector<Shape> shapes;

 private:
  void startShape(std::string_view name) {
    end();
    name_ = checkedName(name, taken_);
    outline_ = {};
  }

  void needsOutline() const {
    if (!outline_.begun()) fail("shape " + inQuotes(name_) + " has no points yet");
  }

  void addPoint(const std::vector<std::string_view>& words) {
    if (words.size() < 2 || words.size() > 3)
      fail("a point is: place, height, and if wanted the curve that leads to it");
    const double x = numberOf(words[0]);
    const double y = numberOf(words[1]);
    if (outline_.begun()) return outline_.lineTo(x, y, words.size() == 3 ? numberOf(words[2]) : kStraightCurve);
    if (x != 0.0 || words.size() == 3) fail("the first point is at place 0 and has no curve");
    outline_.begin(y);
  }

  void addPattern(const std::vector<std::string_view>& words) {
    if (outline_.begun()) fail("a pattern is a shape by itself; it follows the line with the name");
    const bool hasOneValue = words.size() == 2;
    const bool hasTwoValues = words.size() == 3;
    if (words[0] == "sine" && hasOneValue) return outline_.sine(numberOf(words[1]));
    if (words[0] == "gate" && hasTwoValues) return outline_.gate(words[1], numberOf(words[2]));
    if (words[0] == "pluck" && hasTwoValues) return outline_.pluck(words[1], numberOf(words[2]));
    if (words[0] != "steps")
      fail(inQuotes(words[0]) + " is no pattern with " + std::to_string(words.size() - 1) + " values");
    std::vector<double> levels;
    for (std::size_t i = 1; i < words.size(); ++i) levels.push_back(numberOf(words[i]));
    outline_.steps(levels);
  }

  std::string folder_, name_;
  Outline outline_;
  std::set<std::string, std::less<>> taken_;
};

// --- Presets

struct DestinationWord {
  std::string_view name;
  Movement::Of of;
  std::string_view unit;
};
constexpr auto kDestinations = std::to_array<DestinationWord>({
    {"volume", Movement::Of::volume, "dB"},
    {"pan", Movement::Of::pan, "%"},
    {"cutoff", Movement::Of::cutoff, "%"},
    {"resonance", Movement::Of::resonance, "%"},
    {"var", Movement::Of::var, "%"},
    {"controller", Movement::Of::controller, "steps"},
});

// "volume, period 1/4, depth 20 dB", also with "once" in place of "period" and "at 100 Hz" behind it.
Movement readMovement(std::string_view text) {
  const auto [name, facts] = splitAt(text, ',');
  const auto word = std::ranges::find(kDestinations, name, &DestinationWord::name);
  if (word == kDestinations.end()) fail(inQuotes(name) + " is nothing that moves");
  Movement movement;
  movement.of = word->of;
  for (std::string_view rest = facts; !rest.empty();) {
    const auto [fact, next] = splitAt(rest, ',');
    rest = next;
    const auto [key, value] = splitAt(fact, ' ');
    if (key == "period" || key == "once") {
      const auto length = readLength(value);
      if (!length) fail(inQuotes(value) + " is no length; a rate step, beats or seconds (s) are expected");
      movement.period = *length;
      movement.periodText = value;
      movement.once = key == "once";
    } else if (key == "depth" || key == "at") {
      const std::string_view unit = key == "at" ? "Hz" : word->unit;
      const auto quantity = readQuantity(value, unit);
      if (!quantity || *quantity <= 0.0) fail(inQuotes(value) + " is no number of " + std::string(unit));
      (key == "at" ? movement.toneHz : movement.depth) = *quantity;
    } else {
      fail(inQuotes(fact) + " is not understood; period, once, depth and at are");
    }
  }
  if (movement.periodText.empty() || movement.depth <= 0.0) fail("a movement has a period (or once) and a depth");
  return movement;
}

class PresetReader {
 public:
  PresetReader(std::string folder, const std::vector<Shape>& shapes) : folder_(std::move(folder)), shapes_(shapes) {}

  void take(std::string_view line) {
    if (const auto name = after("preset", line)) return startPreset(*name);
    if (presets.empty()) fail("a preset starts with a line \"preset NAME\"");
    Preset& preset = presets.back();
    if (const auto about = after("about", line)) {
      preset.about = *about;
      return;
    }
    const auto [key, value] = splitAt(line, '=');
    if (value.empty()) fail("about, or NAME = VALUE, is expected");
    if (key == "moves") {
      preset.movements.push_back(readMovement(value));
    } else if (const auto graph = after("graph", key)) {
      setGraph(preset, *graph, value);
    } else {
      setParameter(preset, key, value);
    }
  }

  // The preset that ended, if there is one, must be whole.
  void end() const {
    if (presets.empty()) return;
    const Preset& preset = presets.back();
    if (preset.about.empty()) fail("preset " + inQuotes(preset.name) + " has no line \"about\"");
    if (preset.movements.empty()) fail("preset " + inQuotes(preset.name) + " has no line \"moves = \"");
  }

  std::vector<Preset> presets;

 private:
  void startPreset(std::string_view name) {
    end();
    presets.push_back({folder_, checkedName(name, taken_), {}, {}, {}, {}});
  }

  void setGraph(Preset& preset, std::string_view number, std::string_view path) const {
    const double graph = numberOf(number);
    constexpr std::array<int, 12> kNumbers = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
    if (std::ranges::find(kNumbers, graph) == kNumbers.end()) fail("graphs have numbers from 1 to 12");
    const auto isNamed = [path](const Shape& s) { return "Shapes/" + s.folder + "/" + s.name == path; };
    const auto shape = std::ranges::find_if(shapes_, isNamed);
    if (shape == shapes_.end()) fail("there is no shape " + inQuotes(path));
    const bool isNew = preset.graphs.emplace(static_cast<int>(graph) - 1, shape->points).second;
    if (!isNew) fail("the graph has a shape already");
  }

  static void setParameter(Preset& preset, std::string_view name, std::string_view value) {
    const ParameterWord* const word = findParameter(name);
    if (!word) fail("there is no parameter " + inQuotes(name));
    const auto number = word->read(value);
    if (!number)
      fail(inQuotes(value) + " is no value of " + std::string(name) + "; expected " + std::string(word->expected));
    const bool isTwice = std::ranges::find(preset.settings, word->index, &Setting::index) != preset.settings.end();
    if (isTwice) fail(std::string(name) + " is set already");
    preset.settings.push_back({word->index, *number});
  }

  std::string folder_;
  const std::vector<Shape>& shapes_;
  std::set<std::string, std::less<>> taken_;
};

// --- Files

std::string textOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::string text((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
  if (!stream.is_open() || stream.bad()) throw DefinitionError(file.string() + ": cannot be read");
  return text;
}

std::vector<std::filesystem::path> definitionFiles(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder))
    if (entry.path().extension() == ".txt") files.push_back(entry.path());
  std::ranges::sort(files);
  return files;
}

template <class T>
void append(std::vector<T>& to, std::vector<T> from) {
  std::ranges::move(from, std::back_inserter(to));
}

}  // namespace

std::vector<Shape> readShapes(const std::filesystem::path& file, std::string_view text) {
  ShapeReader reader(file.stem().string());
  readLines(file, text, reader);
  return std::move(reader.shapes);
}

std::vector<Preset> readPresets(const std::filesystem::path& file, std::string_view text,
                                const std::vector<Shape>& shapes) {
  PresetReader reader(file.stem().string(), shapes);
  readLines(file, text, reader);
  return std::move(reader.presets);
}

FactorySet readFactorySet(const std::filesystem::path& folder) {
  FactorySet set;
  for (const auto& file : definitionFiles(folder / "Shapes")) append(set.shapes, readShapes(file, textOf(file)));
  for (const auto& file : definitionFiles(folder)) append(set.presets, readPresets(file, textOf(file), set.shapes));
  return set;
}

}  // namespace modrift::factory
