#pragma once

#include <optional>
#include <string>
#include <vector>

#include "graphics/canvas.h"

namespace lumowatt {

/// Writes down what is drawn, an operation a line: its name, its numbers and its colour, in the
/// order of `Canvas`. A drawing is drawn between "begin" and "end".
class RecordingCanvas : public Canvas {
 public:
  void fill(const Rect& rect, const Color& color) override;
  void fillRoundedRect(const Rect& rect, double radius, const Color& color) override;
  void fillPath(const Path& path, const Color& color, double opacity) override;
  void stroke(const Path& path, const Stroke& stroke, const Color& color) override;
  void drawText(const AttributedString& text, Point origin) override;
  void drawImage(const Image& image, const Rect& rect) override;

  /// That of `character` times the number of characters, across.
  Size textSize(const AttributedString& text) override;

  Size character{10.0, 18.0};
  std::vector<std::string> operations;
};

/// Makes bitmaps that encode as `png`, and none while `refuses`.
class RecordingBitmapFactory : public BitmapFactory {
 public:
  Result<std::unique_ptr<Bitmap>> draw(const Drawing& picture, double scale,
                                       Appearance appearance) override;

  bool refuses = false;
  std::optional<std::string> png = "(the picture)";
  std::vector<std::string> operations;  ///< of all bitmaps
};

}  // namespace lumowatt
