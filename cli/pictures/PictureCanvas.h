// SPDX-License-Identifier: MIT
// A picture in memory: flat rectangles on whole pixels, smooth lines, text that always fits and is always valid, cells
// of colour, and the way into a PNG file. Internal to the files that draw pictures.
#pragma once

#include <algorithm>
#include <cairo.h>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <numbers>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "cli/terminal/Errors.h"

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

namespace modrift::cli {

struct Colour {
  std::uint32_t rgb;
  double alpha = 1.0;
};

// What all pictures share.
inline constexpr Colour kBackground{0x16181d};
inline constexpr Colour kPanel{0x0b0c11};
inline constexpr Colour kTitle{0xe8eaee};
inline constexpr Colour kLabel{0xa4abb8};
inline constexpr Colour kPeakBody{0x2b7c8c};
inline constexpr Colour kRmsBody{0x7fdbe2};
inline constexpr Colour kWeakLine{0xffffff, 0.11};
inline constexpr Colour kStrongLine{0xffffff, 0.30};

enum class Align { left, centre, right };

struct TextStyle {
  double sizePx;
  Colour colour;
  Align align = Align::left;
  bool bold = false;
};

// Bytes of the valid UTF-8 character that the text starts with, 0 if it starts with none or with a control character.
inline std::size_t characterLength(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = byte(0);
  if (lead < 0x80) return lead >= 0x20 && lead != 0x7f ? 1 : 0;
  const std::size_t length = lead < 0xc2 ? 0 : lead < 0xe0 ? 2 : lead < 0xf0 ? 3 : lead < 0xf5 ? 4 : 0;
  if (length == 0 || text.size() < length) return 0;
  for (std::size_t i = 1; i < length; ++i)
    if ((byte(i) & 0xc0) != 0x80) return 0;
  const bool overlong = (lead == 0xe0 && byte(1) < 0xa0) || (lead == 0xf0 && byte(1) < 0x90);
  const bool outside = (lead == 0xed && byte(1) > 0x9f) || (lead == 0xf4 && byte(1) > 0x8f);
  return overlong || outside ? 0 : length;
}

inline std::vector<std::string> printableCharacters(std::string_view text) {
  std::vector<std::string> characters;
  while (!text.empty()) {
    const std::size_t length = characterLength(text);
    characters.emplace_back(length == 0 ? std::string_view("\uFFFD") : text.substr(0, length));
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return characters;
}

struct PicturePoint {
  double x, y;  // pixels, y downwards
};

class PictureCanvas {
 public:
  PictureCanvas(int widthPx, int heightPx, Colour background)
      : surface_(cairo_image_surface_create(CAIRO_FORMAT_RGB24, widthPx, heightPx)),
        cairo_(cairo_create(surface_.get())) {
    if (cairo_status(cairo_.get()) != CAIRO_STATUS_SUCCESS)
      throw RunError("the audio has too many tracks or channels for one picture");
    const std::unique_ptr<cairo_font_options_t, CairoFree> options(cairo_font_options_create());
    cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
    cairo_set_font_options(cairo_.get(), options.get());
    fill(0, 0, widthPx, heightPx, background);
  }

  void fill(double x, double y, double width, double height, Colour colour) {
    addToShape(x, y, width, height);
    fillShape(colour);
  }

  void addToShape(double x, double y, double width, double height) {
    cairo_rectangle(cairo_.get(), x, y, width, height);
  }

  void fillShape(Colour colour) {
    setColour(colour);
    cairo_fill(cairo_.get());
  }

  // Closes the line's ends down to `bottom`, and fills from `top` to there with colours that fade into each other.
  void fillBelow(std::span<const PicturePoint> line, double top, double bottom, Colour upper, Colour lower) {
    if (line.empty()) return;
    addPath(line);
    cairo_line_to(cairo_.get(), line.back().x, bottom);
    cairo_line_to(cairo_.get(), line.front().x, bottom);
    const std::unique_ptr<cairo_pattern_t, CairoFree> fade(cairo_pattern_create_linear(0.0, top, 0.0, bottom));
    const auto stop = [&](double at, Colour c) {
      cairo_pattern_add_color_stop_rgba(fade.get(), at, part(c, 16), part(c, 8), part(c, 0), c.alpha);
    };
    stop(0.0, upper);
    stop(1.0, lower);
    cairo_set_source(cairo_.get(), fade.get());
    cairo_fill(cairo_.get());
  }

  void strokeLine(std::span<const PicturePoint> line, double widthPx, Colour colour) {
    addPath(line);
    setColour(colour);
    cairo_set_line_width(cairo_.get(), widthPx);
    cairo_set_line_join(cairo_.get(), CAIRO_LINE_JOIN_ROUND);
    cairo_set_line_cap(cairo_.get(), CAIRO_LINE_CAP_ROUND);
    cairo_stroke(cairo_.get());
  }

  void disc(PicturePoint centre, double radiusPx, Colour colour) {
    cairo_new_path(cairo_.get());
    cairo_arc(cairo_.get(), centre.x, centre.y, radiusPx, 0.0, 2.0 * std::numbers::pi);
    fillShape(colour);
  }

  // `middleY` is the middle of the digits, the same for all labels of one size.
  void text(double x, double middleY, const std::string& text, TextStyle style) {
    setFont(style);
    const double width = textWidth(text);
    const double shift = style.align == Align::left ? 0.0 : style.align == Align::right ? width : width / 2.0;
    constexpr double kHalfDigitHeight = 0.36;  // of the size
    setColour(style.colour);
    cairo_move_to(cairo_.get(), std::round(x - shift), std::round(middleY + kHalfDigitHeight * style.sizePx));
    cairo_show_text(cairo_.get(), text.c_str());
  }

  [[nodiscard]] double textWidth(const std::string& text, TextStyle style) {
    setFont(style);
    return textWidth(text);
  }

  // Shortened in the middle, where file names differ least.
  [[nodiscard]] std::string fitted(std::string_view text, double maxWidth, TextStyle style) {
    setFont(style);
    const std::vector<std::string> characters = printableCharacters(text.substr(0, kLongestTitle));
    for (std::size_t kept = characters.size();; --kept) {
      std::string line;
      for (std::size_t i = 0; i < kept - kept / 2; ++i) line += characters[i];
      if (kept < characters.size()) line += "\u2026";
      for (std::size_t i = characters.size() - kept / 2; i < characters.size(); ++i) line += characters[i];
      if (kept == 0 || textWidth(line) <= maxWidth) return line;
    }
  }

  // Rows of `width` pixels (0xRRGGBB), top first, with the top left one at (x, y).
  void image(int x, int y, int width, std::vector<std::uint32_t> pixels) {
    const int height = static_cast<int>(pixels.size()) / width;
    const std::unique_ptr<cairo_surface_t, CairoFree> cells(
        cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(pixels.data()), CAIRO_FORMAT_RGB24, width,
                                            height, width * static_cast<int>(sizeof(std::uint32_t))));
    cairo_set_source_surface(cairo_.get(), cells.get(), x, y);
    cairo_paint(cairo_.get());
    cairo_set_source_rgb(cairo_.get(), 0.0, 0.0, 0.0);  // lets go of the pixels
  }

  void save(const std::filesystem::path& png) {
    cairo_status_t status = cairo_status(cairo_.get());
    if (status == CAIRO_STATUS_SUCCESS) status = cairo_surface_write_to_png(surface_.get(), png.c_str());
    if (status != CAIRO_STATUS_SUCCESS)
      throw RunError(png.string() + ": the picture could not be written (" + cairo_status_to_string(status) + ")");
  }

 private:
  static constexpr std::size_t kLongestTitle = 1000;  // bytes; far more than fits

  struct CairoFree {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
    void operator()(cairo_pattern_t* pattern) const { cairo_pattern_destroy(pattern); }
    void operator()(cairo_font_options_t* options) const { cairo_font_options_destroy(options); }
  };

  // 0 to 1.
  static double part(Colour colour, int shift) { return static_cast<double>((colour.rgb >> shift) & 0xffu) / 255.0; }

  void setColour(Colour colour) {
    cairo_set_source_rgba(cairo_.get(), part(colour, 16), part(colour, 8), part(colour, 0), colour.alpha);
  }

  void addPath(std::span<const PicturePoint> line) {
    cairo_new_path(cairo_.get());
    for (const auto& [x, y] : line) cairo_line_to(cairo_.get(), x, y);
  }

  void setFont(TextStyle style) {
#if defined(__SANITIZE_ADDRESS__)
    // cairo keeps fonts for the next use; fontconfig's part of them hangs on offsets, which the leak check cannot
    // follow.
    const __lsan::ScopedDisabler fontsAreKept;
#endif
    cairo_select_font_face(cairo_.get(), "sans-serif", CAIRO_FONT_SLANT_NORMAL,
                           style.bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(cairo_.get(), style.sizePx);
    cairo_get_scaled_font(cairo_.get());  // loads the font here
  }

  [[nodiscard]] double textWidth(const std::string& text) {
    cairo_text_extents_t extents;
    cairo_text_extents(cairo_.get(), text.c_str(), &extents);
    return extents.x_advance;
  }

  std::unique_ptr<cairo_surface_t, CairoFree> surface_;
  std::unique_ptr<cairo_t, CairoFree> cairo_;
};

}  // namespace modrift::cli
