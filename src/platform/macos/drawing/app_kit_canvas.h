#pragma once

#import <AppKit/AppKit.h>

#include "graphics/canvas.h"

NS_ASSUME_NONNULL_BEGIN

namespace lumowatt::macos {

/// Draws in AppKit's current graphics context, of which `Canvas` has the conventions.
class AppKitCanvas : public Canvas {
 public:
  void fill(const Rect& rect, const Color& color) override;
  void fillRoundedRect(const Rect& rect, double radius, const Color& color) override;
  void fillPath(const Path& path, const Color& color, double opacity) override;
  void stroke(const Path& path, const Stroke& stroke, const Color& color) override;
  void drawText(const AttributedString& text, Point origin) override;
  Size textSize(const AttributedString& text) override;
  void drawImage(const Image& image, const Rect& rect) override;
};

NSRect makeRect(const Rect& rect);

/// The drawing as an image of the system's, which draws it on such a canvas whenever it is shown.
NSImage* makeDrawing(const Drawing& drawing);

}  // namespace lumowatt::macos

NS_ASSUME_NONNULL_END
