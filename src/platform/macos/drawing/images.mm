#include "platform/macos/drawing/images.h"

#include <variant>

#include "platform/macos/drawing/app_kit_canvas.h"
#include "platform/macos/drawing/symbols.h"
#include "platform/macos/text.h"

namespace lumowatt::macos {

namespace {

struct ImageMaker {
  const std::string& description;

  NSImage* _Nullable operator()(const Drawing& drawing) const {
    NSImage* const image = makeDrawing(drawing);
    image.accessibilityDescription = description.empty() ? nil : toNSString(description);
    return image;
  }

  NSImage* _Nullable operator()(const Symbol& symbol) const {
    return makeSymbol(symbol, description);
  }
};

}  // namespace

NSImage* _Nullable makeImage(const Image& image) {
  return std::visit(ImageMaker{image.accessibilityDescription}, image.content);
}

}  // namespace lumowatt::macos
