#pragma once

#import <AppKit/AppKit.h>

#include "graphics/canvas.h"

NS_ASSUME_NONNULL_BEGIN

namespace lumowatt::macos {

/// Draws in AppKit's current graphics context, whose conventions `Canvas` shares.
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

/// Returns an image that draws `drawing` on an `AppKitCanvas` each time AppKit renders the image.
NSImage* makeDrawing(const Drawing& drawing);

}  // namespace lumowatt::macos

NS_ASSUME_NONNULL_END
