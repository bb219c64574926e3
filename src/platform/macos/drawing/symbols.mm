#include "platform/macos/drawing/symbols.h"

#include "platform/macos/drawing/styled_text.h"
#include "platform/macos/text.h"

namespace lumowatt::macos {

namespace {

NSImage* _Nullable makeUnstyled(const Symbol& symbol, NSString* _Nullable description) {
  return [NSImage imageWithSystemSymbolName:toNSString(symbol.name)
                   accessibilityDescription:description];
}

/// Returns the tint and the size of the symbol; nil if the symbol specifies neither.
NSImageSymbolConfiguration* _Nullable makeStyle(const Symbol& symbol) {
  NSImageSymbolConfiguration* size = nil;
  if (symbol.pointSize) {
    size = [NSImageSymbolConfiguration configurationWithPointSize:*symbol.pointSize
                                                           weight:NSFontWeightRegular];
  }
  if (!symbol.tint) return size;
  NSImageSymbolConfiguration* const palette =
      [NSImageSymbolConfiguration configurationWithPaletteColors:@[ makeColor(*symbol.tint) ]];
  return size != nil ? [size configurationByApplyingConfiguration:palette] : palette;
}

NSImage* _Nullable applyStyle(NSImage* _Nullable image, const Symbol& symbol) {
  NSImageSymbolConfiguration* const style = makeStyle(symbol);
  return style != nil ? [image imageWithSymbolConfiguration:style] : image;
}

}  // namespace

NSImage* _Nullable makeSymbol(const Symbol& symbol, const std::string& description) {
  NSImage* const plain = makeUnstyled(symbol, description.empty() ? nil : toNSString(description));
  NSImage* const styled = applyStyle(plain, symbol);
  NSImage* const image = styled != nil ? styled : plain;
  [image setTemplate:symbol.isTemplate];
  return image;
}

NSImage* _Nullable makeStyledSymbol(const Symbol& symbol) {
  return applyStyle(makeUnstyled(symbol, nil), symbol);
}

}  // namespace lumowatt::macos
