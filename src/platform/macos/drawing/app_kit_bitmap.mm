#include "platform/macos/drawing/app_kit_bitmap.h"

#import <AppKit/AppKit.h>
#import <CoreGraphics/CoreGraphics.h>

#include "platform/macos/drawing/app_kit_canvas.h"

NS_ASSUME_NONNULL_BEGIN

namespace lumowatt::macos {

namespace {

class AppKitBitmap : public Bitmap {
 public:
  explicit AppKitBitmap(NSBitmapImageRep* pixels) : pixels_(pixels) {}

  std::optional<std::string> encodePng() override {
    @autoreleasepool {
      NSData* const png = [pixels_ representationUsingType:NSBitmapImageFileTypePNG properties:@{}];
      if (png == nil) return std::nullopt;
      return std::string(static_cast<const char*>(png.bytes), png.length);
    }
  }

 private:
  NSBitmapImageRep* pixels_;
};

/// Returns nil if the memory for the pixels cannot be allocated.
NSBitmapImageRep* _Nullable makePixels(NSSize size, double scale) {
  return
      [[NSBitmapImageRep alloc] initWithBitmapDataPlanes:nullptr
                                              pixelsWide:static_cast<NSInteger>(size.width * scale)
                                              pixelsHigh:static_cast<NSInteger>(size.height * scale)
                                           bitsPerSample:8
                                         samplesPerPixel:4
                                                hasAlpha:YES
                                                isPlanar:NO
                                          colorSpaceName:NSDeviceRGBColorSpace
                                             bytesPerRow:0
                                            bitsPerPixel:0];
}

/// Calls `draw`, with system colors resolved for `appearance`.
void drawWithAppearance(Appearance appearance, void(NS_NOESCAPE ^ draw)(void)) {
  const bool isDark = appearance == Appearance::dark;
  NSAppearance* const systemAppearance =
      [NSAppearance appearanceNamed:isDark ? NSAppearanceNameDarkAqua : NSAppearanceNameAqua];
  if (systemAppearance != nil) {
    [systemAppearance performAsCurrentDrawingAppearance:draw];
  } else {
    draw();
  }
}

/// Draws the image so that it fills the context, with `scale` pixels per point.
void drawInContext(NSGraphicsContext* context, NSImage* image, double scale) {
  [NSGraphicsContext saveGraphicsState];
  NSGraphicsContext.currentContext = context;
  CGContextScaleCTM(context.CGContext, scale, scale);
  [image drawInRect:NSMakeRect(0.0, 0.0, image.size.width, image.size.height)];
  [context flushGraphics];
  [NSGraphicsContext restoreGraphicsState];
}

}  // namespace

AppKitBitmapFactory::AppKitBitmapFactory() { [NSApplication sharedApplication]; }

Result<std::unique_ptr<Bitmap>> AppKitBitmapFactory::draw(const Drawing& picture, double scale,
                                                          Appearance appearance) {
  @autoreleasepool {
    NSImage* const image = makeDrawing(picture);
    NSBitmapImageRep* const pixels = makePixels(image.size, scale);
    if (pixels == nil) return Failure{"out of memory"};
    NSGraphicsContext* const context = [NSGraphicsContext graphicsContextWithBitmapImageRep:pixels];
    if (context == nil) return Failure{"no graphics context can be made"};
    // The size in points must be set after the context is created. Otherwise the context is scaled
    // already, and `drawInContext` would scale it a second time.
    pixels.size = image.size;
    drawWithAppearance(appearance, ^{
      drawInContext(context, image, scale);
    });
    return std::unique_ptr<Bitmap>(std::make_unique<AppKitBitmap>(pixels));
  }
}

}  // namespace lumowatt::macos

NS_ASSUME_NONNULL_END
