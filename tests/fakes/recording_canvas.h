#pragma once

#include <optional>
#include <string>
#include <vector>

#include "graphics/canvas.h"

namespace lumowatt {

/// Canvas that records each operation as a line of text: its name, its numbers and its color, in
/// the order of the arguments. The operations of a nested drawing are between "begin" and "end".
class RecordingCanvas : public Canvas {
 public:
  void fill(const Rect& rect, const Color& color) override;
  void fillRoundedRect(const Rect& rect, double radius, const Color& color) override;
  void fillPath(const Path& path, const Color& color, double opacity) override;
  void stroke(const Path& path, const Stroke& stroke, const Color& color) override;
  void drawText(const AttributedString& text, Point origin) override;
  void drawImage(const Image& image, const Rect& rect) override;

  /// Returns the size of the text if every character has the size `character`.
  Size textSize(const AttributedString& text) override;

  Size character{10.0, 18.0};
  std::vector<std::string> operations;
};

/// Factory of bitmaps that record the operations of the drawing. Their encoded form is `png`.
class RecordingBitmapFactory : public BitmapFactory {
 public:
  Result<std::unique_ptr<Bitmap>> draw(const Drawing& picture, double scale,
                                       Appearance appearance) override;

  bool isFailing = false;                            ///< whether `draw` fails
  std::optional<std::string> png = "(the picture)";  ///< empty if encoding should fail
  std::vector<std::string> operations;               ///< of all bitmaps
};

}  // namespace lumowatt
