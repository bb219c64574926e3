#include "platform/linux/desktop/panel_button.h"

#include <utility>

#include "artwork/svg.h"
#include "artwork/wide_icon.h"
#include "graphics/symbol.h"
#include "platform/linux/desktop/text.h"

namespace lumowatt::desktop {

namespace {

constexpr std::string_view applicationName = "Lumowatt";

/// The icon of a symbol. What is no symbol is shown as an empty battery: without an icon many
/// panels show nothing at all.
std::string iconOf(const std::optional<Symbol>& symbol) {
  if (!symbol) return artwork::iconName(symbol::battery0, std::nullopt);
  const auto* const tint = symbol->tint ? std::get_if<SystemColor>(&*symbol->tint) : nullptr;
  return artwork::iconName(symbol->name, tint != nullptr ? std::optional(*tint) : std::nullopt);
}

}  // namespace

PanelButton::PanelButton(sd_bus* bus, sd_event* loop, std::string icons,
                         ApplicationDelegate& application,
                         std::function<void(const MenuItem&)> choose)
    : bus_(bus),
      application_(application),
      choose_(std::move(choose)),
      glyph_(bus, loop, std::move(icons)),
      tiles_(loop, glyph_, application, choose_) {
  glyph_.setId(applicationName);
  glyph_.setTitle(applicationName);
  showGlyph();
}

void PanelButton::setImage(const std::optional<Image>& image) {
  const auto* const found = image ? std::get_if<Symbol>(&image->content) : nullptr;
  const auto symbol = found != nullptr ? std::optional(*found) : std::nullopt;
  if (symbol == symbol_) return;
  symbol_ = symbol;
  showGlyph();
}

void PanelButton::setTitle(std::string_view title) { showTitle({}, title); }

void PanelButton::setAttributedTitle(const AttributedString& title) {
  std::string text;
  for (const TextRun& run : title) text += run.text;
  showTitle(title, trimmed(text));  // panels keep a distance of their own
}

void PanelButton::showTitle(const AttributedString& title, std::string_view label) {
  const bool isAnother = title != title_;
  title_ = title;
  glyph_.setLabel(label);
  tiles_.followTexts();
  showTiles();
  if (isAnother) showGlyph();
}

void PanelButton::setToolTip(std::string_view text) {
  glyph_.setToolTip(text);
  tiles_.followTexts();
}

void PanelButton::setAccessibilityLabel(std::string_view text) {
  glyph_.setDescription(text);
  tiles_.followTexts();
}

void PanelButton::showTiles() {
  const bool hasTiles = form_ == TitleForm::tiles && !title_.empty();
  tiles_.show(hasTiles ? application_.titleTiles() : std::vector<Tile>{});
}

void PanelButton::showGlyph() {
  const bool isWide = form_ == TitleForm::wide && !title_.empty();
  const auto wide =
      isWide ? wideIcons_.hold({artwork::wideIcon(symbol_, title_)}) : wideIcons_.hold({});
  const bool hasWide = wide && !wide->empty();
  glyph_.setIcon(hasWide ? wideIcons_.file(wide->front()) : iconOf(symbol_));
}

void PanelButton::attachMenu() { menu_.emplace(bus_, application_, choose_); }

void PanelButton::followMenu() {
  if (!menu_) return;
  menu_->follow(glyph_.toolTip());
  tiles_.followMenus(glyph_.toolTip());
}

void PanelButton::show() {
  panels_.emplace(bus_, [this](const std::string& process) { enterPanel(process); });
}

void PanelButton::enterPanel(const std::string& process) {
  form_ = titleForm(process);
  showGlyph();
  showTiles();
  glyph_.registerItem();
  tiles_.registerItems();
}

}  // namespace lumowatt::desktop
