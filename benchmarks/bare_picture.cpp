// Writes a PNG file with one line of text on a plain background. The font, the libraries and the
// size in pixels are those of the pictures that `lumowatt --snapshot` writes, so this program is
// the baseline for their cost.
//
//   bare_picture PATH

#include <pango/pangocairo.h>

#include <cstdio>

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: bare_picture PATH\n");
    return 2;
  }
  cairo_surface_t* const surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 1120, 732);
  cairo_t* const cairo = cairo_create(surface);
  cairo_set_source_rgb(cairo, 0.1, 0.08, 0.15);
  cairo_paint(cairo);

  PangoLayout* const layout = pango_cairo_create_layout(cairo);
  PangoFontDescription* const font = pango_font_description_from_string("Inter 20");
  pango_layout_set_font_description(layout, font);
  pango_layout_set_text(layout, "Charge: 64% (2463 of 3849 mAh)", -1);
  cairo_set_source_rgb(cairo, 0.93, 0.93, 0.93);
  cairo_move_to(cairo, 80, 168);
  pango_cairo_show_layout(cairo, layout);

  const cairo_status_t status = cairo_surface_write_to_png(surface, argv[1]);
  pango_font_description_free(font);
  g_object_unref(layout);
  cairo_destroy(cairo);
  cairo_surface_destroy(surface);
  return status == CAIRO_STATUS_SUCCESS ? 0 : 1;
}
