#pragma once

#include <pango/pangocairo.h>

#include <memory>

#include "graphics/attributed_string.h"
#include "graphics/geometry.h"

namespace lumowatt::cairo {

/// Gives a GLib object back when its owner goes.
struct ObjectReleaser {
  void operator()(gpointer object) const { g_object_unref(object); }
};
template <typename T>
using ObjectPointer = std::unique_ptr<T, ObjectReleaser>;

/// Lays text out in the fonts of this machine.
class TextLayout {
 public:
  explicit TextLayout(Appearance appearance);

  /// Whether text can be laid out: Pango works, and a font is installed. Where not, the reason is
  /// on standard error, and nothing else may be asked.
  bool isValid() const { return context_ != nullptr; }

  Size size(const AttributedString& text) const;

  /// Draws with the top left corner of the text's box at the origin of `cairo`, whose y must grow
  /// downward.
  void draw(cairo_t* cairo, const AttributedString& text) const;

 private:
  ObjectPointer<PangoLayout> layout(const AttributedString& text) const;

  Appearance appearance_;
  ObjectPointer<PangoFontMap> fonts_;
  ObjectPointer<PangoContext> context_;
};

}  // namespace lumowatt::cairo
