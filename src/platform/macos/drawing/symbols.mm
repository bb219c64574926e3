#include "platform/macos/drawing/symbols.h"

#include "platform/macos/drawing/styled_text.h"
#include "platform/macos/text.h"

namespace lumowatt::macos {

namespace {

NSImage* _Nullable find(const Symbol& symbol, NSString* _Nullable description) {
  return [NSImage imageWithSystemSymbolName:toNSString(symbol.name)
                   accessibilityDescription:description];
}

/// Nil for a symbol that is shown as it is.
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

NSImage* _Nullable styled(NSImage* _Nullable image, const Symbol& symbol) {
  NSImageSymbolConfiguration* const style = makeStyle(symbol);
  return style != nil ? [image imageWithSymbolConfiguration:style] : image;
}

}  // namespace

NSImage* _Nullable makeSymbol(const Symbol& symbol, const std::string& description) {
  NSImage* const plain = find(symbol, description.empty() ? nil : toNSString(description));
  NSImage* const withStyle = styled(plain, symbol);
  NSImage* const image = withStyle != nil ? withStyle : plain;
  [image setTemplate:symbol.isTemplate];
  return image;
}

NSImage* _Nullable makeStyledSymbol(const Symbol& symbol) {
  return styled(find(symbol, nil), symbol);
}

}  // namespace lumowatt::macos
