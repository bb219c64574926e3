#include "platform/macos/drawing/styled_text.h"

#include <variant>

#include "platform/macos/text.h"

namespace lumowatt::macos {

namespace {

struct ColorMaker {
  NSColor* operator()(SystemColor color) const {
    switch (color) {
      case SystemColor::green:
        return NSColor.systemGreenColor;
      case SystemColor::orange:
        return NSColor.systemOrangeColor;
      case SystemColor::red:
        return NSColor.systemRedColor;
      case SystemColor::accent:
        return NSColor.controlAccentColor;
      case SystemColor::label:
        return NSColor.labelColor;
      case SystemColor::secondaryLabel:
        return NSColor.secondaryLabelColor;
      case SystemColor::separator:
        return NSColor.separatorColor;
      case SystemColor::windowBackground:
        break;
    }
    return NSColor.windowBackgroundColor;
  }

  NSColor* operator()(const CalibratedRgb& color) const {
    return [NSColor colorWithCalibratedRed:color.red green:color.green blue:color.blue alpha:1.0];
  }

  NSColor* operator()(const CalibratedWhite& color) const {
    return [NSColor colorWithCalibratedWhite:color.white alpha:1.0];
  }
};

NSFont* makeFont(const Font& font) {
  switch (font.face) {
    case Font::Face::boldSystem:
      return [NSFont boldSystemFontOfSize:font.size];
    case Font::Face::monospacedDigits:
      return [NSFont monospacedDigitSystemFontOfSize:font.size weight:NSFontWeightRegular];
    case Font::Face::system:
      break;
  }
  return [NSFont systemFontOfSize:font.size];
}

NSAttributedString* makeRun(const TextRun& run) {
  NSMutableDictionary<NSAttributedStringKey, id>* const attributes =
      [NSMutableDictionary dictionaryWithObject:makeFont(run.font) forKey:NSFontAttributeName];
  if (run.color) attributes[NSForegroundColorAttributeName] = makeColor(*run.color);
  if (run.baselineOffset != 0.0) attributes[NSBaselineOffsetAttributeName] = @(run.baselineOffset);
  return [[NSAttributedString alloc] initWithString:toNSString(run.text) attributes:attributes];
}

}  // namespace

NSColor* makeColor(const Color& color) { return std::visit(ColorMaker{}, color); }

NSAttributedString* makeAttributedString(const AttributedString& text) {
  NSMutableAttributedString* const result = [[NSMutableAttributedString alloc] init];
  for (const TextRun& run : text) [result appendAttributedString:makeRun(run)];
  return result;
}

}  // namespace lumowatt::macos
