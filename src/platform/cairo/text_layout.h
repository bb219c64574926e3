#pragma once

#include <pango/pangocairo.h>

#include <memory>

#include "graphics/attributed_string.h"
#include "graphics/geometry.h"

namespace lumowatt::cairo {

/// Deleter that releases a reference to a GLib object.
struct ObjectReleaser {
  void operator()(gpointer object) const { g_object_unref(object); }
};
template <typename T>
using ObjectPointer = std::unique_ptr<T, ObjectReleaser>;

/// Lays out text in the installed fonts.
class TextLayout {
 public:
  explicit TextLayout(Appearance appearance);

  /// Returns whether text can be laid out: a font is installed, and Pango can use it. If not, the
  /// other functions must not be called. Pango reports its own errors on the standard error.
  bool isValid() const { return context_ != nullptr; }

  Size size(const AttributedString& text) const;

  /// Draws the text with the top left corner of its box at the current point of `cairo`, whose y
  /// must grow downward.
  void draw(cairo_t* cairo, const AttributedString& text) const;

 private:
  ObjectPointer<PangoLayout> layout(const AttributedString& text) const;

  Appearance appearance_;
  ObjectPointer<PangoFontMap> fonts_;
  ObjectPointer<PangoContext> context_;
};

}  // namespace lumowatt::cairo
