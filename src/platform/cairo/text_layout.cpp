#include "platform/cairo/text_layout.h"

#include <fontconfig/fontconfig.h>

#include <cmath>
#include <string>

#include "artwork/palette.h"

namespace lumowatt::cairo {

namespace {

// Fonts for user interfaces, in order of preference. Pango uses the first installed font, and the
// next ones for characters that the first one lacks.
constexpr const char* systemFamilies =
    "Inter, Cantarell, Noto Sans, Ubuntu, Roboto, DejaVu Sans, sans-serif";

bool fontIsInstalled() {
  const FcFontSet* const fonts = FcConfigGetFonts(nullptr, FcSetSystem);
  return fonts != nullptr && fonts->nfont > 0;
}

int pangoUnits(double points) { return static_cast<int>(std::lround(points * PANGO_SCALE)); }

guint16 component(double value) { return static_cast<guint16>(std::lround(value * 65535.0)); }

/// Adds the attributes of one run of text to a list.
class RunAttributes {
 public:
  RunAttributes(PangoAttrList* list, std::size_t start, std::size_t end)
      : list_(list), start_(static_cast<guint>(start)), end_(static_cast<guint>(end)) {}

  void apply(const TextRun& run, Appearance appearance) const {
    PangoFontDescription* const font = pango_font_description_new();
    pango_font_description_set_family_static(font, systemFamilies);
    pango_font_description_set_absolute_size(font, run.font.size * PANGO_SCALE);
    if (run.font.face == Font::Face::boldSystem) {
      pango_font_description_set_weight(font, PANGO_WEIGHT_BOLD);
    }
    insert(pango_attr_font_desc_new(font));
    pango_font_description_free(font);
    if (run.font.face == Font::Face::monospacedDigits) {
      insert(pango_attr_font_features_new("tnum=1"));
    }
    const auto color = artwork::resolved(run.color.value_or(CalibratedWhite{0.0}), appearance);
    insert(pango_attr_foreground_new(component(color.red), component(color.green),
                                     component(color.blue)));
    insert(pango_attr_foreground_alpha_new(component(color.alpha)));
    if (run.baselineOffset != 0.0) insert(pango_attr_rise_new(pangoUnits(run.baselineOffset)));
  }

 private:
  void insert(PangoAttribute* attribute) const {
    attribute->start_index = start_;
    attribute->end_index = end_;
    pango_attr_list_insert(list_, attribute);
  }

  PangoAttrList* list_;
  guint start_;
  guint end_;
};

}  // namespace

TextLayout::TextLayout(Appearance appearance) : appearance_(appearance) {
  if (!fontIsInstalled()) return;
  fonts_.reset(pango_cairo_font_map_new());
  if (fonts_ == nullptr) return;  // Pango has reported the reason
  context_.reset(pango_font_map_create_context(fonts_.get()));

  // Disables hinting, because bitmaps are drawn with several pixels per point.
  cairo_font_options_t* const options = cairo_font_options_create();
  cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
  cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
  cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
  pango_cairo_context_set_font_options(context_.get(), options);
  cairo_font_options_destroy(options);
  pango_context_set_round_glyph_positions(context_.get(), FALSE);
  pango_context_set_language(context_.get(), pango_language_from_string("en"));
}

ObjectPointer<PangoLayout> TextLayout::layout(const AttributedString& text) const {
  std::string all;
  PangoAttrList* const attributes = pango_attr_list_new();
  for (const TextRun& run : text) {
    const std::size_t start = all.size();
    all += run.text;
    RunAttributes(attributes, start, all.size()).apply(run, appearance_);
  }
  ObjectPointer<PangoLayout> result(pango_layout_new(context_.get()));
  pango_layout_set_single_paragraph_mode(result.get(), TRUE);
  pango_layout_set_text(result.get(), all.data(), static_cast<int>(all.size()));
  pango_layout_set_attributes(result.get(), attributes);
  pango_attr_list_unref(attributes);
  return result;
}

Size TextLayout::size(const AttributedString& text) const {
  PangoRectangle box{};
  pango_layout_get_extents(layout(text).get(), nullptr, &box);
  return {static_cast<double>(box.width) / PANGO_SCALE,
          static_cast<double>(box.height) / PANGO_SCALE};
}

void TextLayout::draw(cairo_t* cairo, const AttributedString& text) const {
  pango_cairo_show_layout(cairo, layout(text).get());
}

}  // namespace lumowatt::cairo
