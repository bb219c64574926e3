#include "fakes/recording_canvas.h"

#include <algorithm>
#include <sstream>
#include <utility>
#include <variant>

namespace lumowatt {

namespace {

template <typename... Values>
std::string line(const Values&... values) {
  std::ostringstream stream;
  stream.precision(12);
  (stream << ... << values);
  return stream.str();
}

std::string text(Point point) { return line("(", point.x, ", ", point.y, ")"); }

std::string text(const Rect& rect) {
  return line("(", rect.x, ", ", rect.y, ", ", rect.width, ", ", rect.height, ")");
}

struct ColorText {
  std::string operator()(SystemColor color) const {
    switch (color) {
      case SystemColor::green:
        return "green";
      case SystemColor::orange:
        return "orange";
      case SystemColor::red:
        return "red";
      case SystemColor::accent:
        return "accent";
      case SystemColor::label:
        return "label";
      case SystemColor::secondaryLabel:
        return "secondaryLabel";
      case SystemColor::separator:
        return "separator";
      case SystemColor::windowBackground:
        return "windowBackground";
    }
    return "?";
  }
  std::string operator()(const CalibratedRgb& color) const {
    return line("rgb(", color.red, ", ", color.green, ", ", color.blue, ")");
  }
  std::string operator()(const CalibratedWhite& color) const {
    return line("white(", color.white, ")");
  }
};

std::string text(const Color& color) { return std::visit(ColorText{}, color); }

std::string text(const std::optional<Color>& color) { return color ? text(*color) : "no color"; }

std::string text(const Font& font) {
  switch (font.face) {
    case Font::Face::system:
      return line("system ", font.size);
    case Font::Face::boldSystem:
      return line("bold ", font.size);
    case Font::Face::monospacedDigits:
      return line("digits ", font.size);
  }
  return "?";
}

struct ElementText {
  std::string operator()(const MoveTo& move) const { return " M" + text(move.to); }
  std::string operator()(const LineTo& lineTo) const { return " L" + text(lineTo.to); }
  std::string operator()(const CurveTo& curve) const {
    return " C" + text(curve.control1) + text(curve.control2) + text(curve.to);
  }
  std::string operator()(const ClosePath&) const { return " Z"; }
};

std::string text(const Path& path) {
  std::string elements;
  for (const auto& element : path) elements += std::visit(ElementText{}, element);
  return elements;
}

class RecordingBitmap : public Bitmap {
 public:
  RecordingBitmap(std::vector<std::string>& operations, std::optional<std::string> png)
      : operations_(operations), png_(std::move(png)) {}

  std::optional<std::string> encodePng() override {
    operations_.emplace_back("encode");
    return png_;
  }

 private:
  std::vector<std::string>& operations_;
  std::optional<std::string> png_;
};

}  // namespace

void RecordingCanvas::fill(const Rect& rect, const Color& color) {
  operations.push_back("fill " + text(rect) + " " + text(color));
}

void RecordingCanvas::fillRoundedRect(const Rect& rect, double radius, const Color& color) {
  operations.push_back(line("rounded ", text(rect), " radius ", radius, " ", text(color)));
}

void RecordingCanvas::fillPath(const Path& path, const Color& color, double opacity) {
  operations.push_back(line("area", text(path), " opacity ", opacity, " ", text(color)));
}

void RecordingCanvas::stroke(const Path& path, const Stroke& stroke, const Color& color) {
  operations.push_back(line("stroke", text(path), " width ", stroke.width,
                            stroke.join == LineJoin::round ? " round joins" : "",
                            stroke.cap == LineCap::round ? " round caps" : "", " ", text(color)));
}

void RecordingCanvas::drawText(const AttributedString& string, Point origin) {
  std::string runs;
  for (const TextRun& run : string) {
    runs += " \"" + run.text + "\" " + text(run.font) + " " + text(run.color);
    if (run.baselineOffset != 0.0) runs += line(" raised ", run.baselineOffset);
  }
  operations.push_back("text " + text(origin) + runs);
}

Size RecordingCanvas::textSize(const AttributedString& string) {
  std::ptrdiff_t characters = 0;
  for (const TextRun& run : string) {
    characters += std::ranges::count_if(
        run.text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xc0U) != 0x80U; });
  }
  return {character.width * static_cast<double>(characters), character.height};
}

void RecordingCanvas::drawImage(const Image& image, const Rect& rect) {
  if (const auto* symbol = std::get_if<Symbol>(&image.content)) {
    operations.push_back(line("symbol ", text(rect), " ", symbol->name, " ", text(symbol->tint),
                              symbol->isTemplate ? " template" : "", " size ",
                              symbol->pointSize.value_or(0.0),
                              image.accessibilityDescription.empty() ? "" : " described"));
    return;
  }
  const auto& drawing = std::get<Drawing>(image.content);
  const auto [width, height] = drawing.size;
  operations.push_back(
      line("begin ", text(rect), " of ", width, " x ", height, drawing.flipped ? " flipped" : ""));
  drawing.draw(*this, {0.0, 0.0, width, height});
  operations.emplace_back("end");
}

Result<std::unique_ptr<Bitmap>> RecordingBitmapFactory::draw(const Drawing& picture, double scale,
                                                             Appearance appearance) {
  const auto [width, height] = picture.size;
  operations.push_back(line("bitmap ", width, " x ", height, " scale ", scale,
                            appearance == Appearance::dark ? " dark" : " light"));
  if (isFailing) return Failure{"no bitmaps today"};
  RecordingCanvas canvas;
  canvas.drawImage({picture}, {0.0, 0.0, width, height});
  operations.insert(operations.end(), canvas.operations.begin(), canvas.operations.end());
  return std::unique_ptr<Bitmap>(std::make_unique<RecordingBitmap>(operations, png));
}

}  // namespace lumowatt
