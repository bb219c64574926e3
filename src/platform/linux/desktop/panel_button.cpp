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
  setImage(std::nullopt);
}

void PanelButton::setImage(const std::optional<Image>& image) {
  const auto* const symbol = image ? std::get_if<Symbol>(&image->content) : nullptr;
  symbol_ = symbol != nullptr ? std::optional(*symbol) : std::nullopt;
  showGlyph();
}

void PanelButton::setTitle(std::string_view title) {
  title_.clear();
  setLabel(title);
}

void PanelButton::setAttributedTitle(const AttributedString& title) {
  title_ = title;
  std::string text;
  for (const TextRun& run : title) text += run.text;
  setLabel(trimmed(text));  // panels keep a distance of their own
}

void PanelButton::setLabel(std::string_view label) {
  glyph_.setLabel(label);
  tiles_.followTexts();
  showTitle();
}

void PanelButton::setToolTip(std::string_view text) {
  glyph_.setToolTip(text);
  tiles_.followTexts();
}

void PanelButton::setAccessibilityLabel(std::string_view text) {
  glyph_.setDescription(text);
  tiles_.followTexts();
}

void PanelButton::showTitle() {
  const bool hasTiles = form_ == TitleForm::tiles && !title_.empty();
  tiles_.show(hasTiles ? application_.titleTiles() : std::vector<Tile>{});
  showGlyph();
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
  showTitle();
  glyph_.registerItem();
  tiles_.registerItems();
}

}  // namespace lumowatt::desktop
