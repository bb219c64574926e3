#include "platform/macos/drawing/app_kit_canvas.h"

#include <variant>

#include "platform/macos/drawing/styled_text.h"
#include "platform/macos/drawing/symbols.h"

namespace lumowatt::macos {

namespace {

NSPoint makePoint(Point point) { return NSMakePoint(point.x, point.y); }

/// Appends a path segment to an AppKit path.
struct SegmentAppender {
  NSBezierPath* path;

  void operator()(const MoveTo& move) const { [path moveToPoint:makePoint(move.to)]; }
  void operator()(const LineTo& line) const { [path lineToPoint:makePoint(line.to)]; }
  void operator()(const CurveTo& curve) const {
    [path curveToPoint:makePoint(curve.to)
         controlPoint1:makePoint(curve.control1)
         controlPoint2:makePoint(curve.control2)];
  }
  void operator()(const ClosePath&) const { [path closePath]; }
};

NSBezierPath* makePath(const Path& path) {
  NSBezierPath* const line = [NSBezierPath bezierPath];
  for (const auto& segment : path) std::visit(SegmentAppender{line}, segment);
  return line;
}

/// Makes the image that AppKit draws for each kind of content.
struct DrawableImageMaker {
  NSImage* _Nullable operator()(const Drawing& drawing) const { return makeDrawing(drawing); }
  NSImage* _Nullable operator()(const Symbol& symbol) const { return makeStyledSymbol(symbol); }
};

}  // namespace

void AppKitCanvas::fill(const Rect& rect, const Color& color) {
  [makeColor(color) setFill];
  NSRectFillUsingOperation(makeRect(rect), NSGraphicsContext.currentContext.compositingOperation);
}

void AppKitCanvas::fillRoundedRect(const Rect& rect, double radius, const Color& color) {
  [makeColor(color) setFill];
  [[NSBezierPath bezierPathWithRoundedRect:makeRect(rect) xRadius:radius yRadius:radius] fill];
}

void AppKitCanvas::fillPath(const Path& path, const Color& color, double opacity) {
  [[makeColor(color) colorWithAlphaComponent:opacity] setFill];
  [makePath(path) fill];
}

void AppKitCanvas::stroke(const Path& path, const Stroke& stroke, const Color& color) {
  NSBezierPath* const line = makePath(path);
  line.lineWidth = stroke.width;
  line.lineJoinStyle = stroke.join == LineJoin::round ? NSLineJoinStyleRound : NSLineJoinStyleMiter;
  line.lineCapStyle = stroke.cap == LineCap::round ? NSLineCapStyleRound : NSLineCapStyleButt;
  [makeColor(color) setStroke];
  [line stroke];
}

void AppKitCanvas::drawText(const AttributedString& text, Point origin) {
  [makeAttributedString(text) drawAtPoint:makePoint(origin)];
}

Size AppKitCanvas::textSize(const AttributedString& text) {
  const NSSize size = [makeAttributedString(text) size];
  return {size.width, size.height};
}

void AppKitCanvas::drawImage(const Image& image, const Rect& rect) {
  [std::visit(DrawableImageMaker{}, image.content) drawInRect:makeRect(rect)];
}

NSRect makeRect(const Rect& rect) { return NSMakeRect(rect.x, rect.y, rect.width, rect.height); }

NSImage* makeDrawing(const Drawing& drawing) {
  const auto draw = drawing.draw;
  return [NSImage imageWithSize:NSMakeSize(drawing.size.width, drawing.size.height)
                        flipped:drawing.flipped
                 drawingHandler:^BOOL(NSRect rect) {
                   AppKitCanvas canvas;
                   draw(canvas, {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height});
                   return YES;
                 }];
}

}  // namespace lumowatt::macos
