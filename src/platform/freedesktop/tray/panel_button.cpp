#include "platform/freedesktop/tray/panel_button.h"

#include <utility>

#include "artwork/svg.h"
#include "artwork/wide_icon.h"
#include "graphics/symbol.h"
#include "platform/freedesktop/user/text.h"

namespace lumowatt::freedesktop {

namespace {

constexpr std::string_view applicationName = "Lumowatt";

/// The icon of a symbol. What is no symbol is shown as an empty battery: without an icon many
/// panels show nothing at all.
std::string iconOf(const std::optional<Symbol>& symbol) {
  if (!symbol) return artwork::iconName(symbol::battery0, std::nullopt);
  const auto* const tint = symbol->tint ? std::get_if<SystemColor>(&*symbol->tint) : nullptr;
  return artwork::iconName(symbol->name, tint != nullptr ? std::optional(*tint) : std::nullopt);
}

/// How the names of icons begin that are made for this session: another one of the same user has
/// the same runtime folder.
std::string iconPrefix(sd_bus* bus, const char* kind) {
  sd_id128_t session{};
  sd_bus_get_bus_id(bus, &session);
  char id[SD_ID128_STRING_MAX];
  return std::string("lumowatt-") + kind + "-" + sd_id128_to_string(session, id) + "-";
}

}  // namespace

PanelButton::PanelButton(sd_bus* bus, sd_event* loop, std::string icons,
                         ApplicationDelegate& application,
                         std::function<void(const MenuItem&)> choose)
    : bus_(bus),
      application_(application),
      choose_(updating(std::move(choose))),
      glyph_(bus, loop, std::move(icons)),
      tiles_(loop, glyph_, iconPrefix(bus, "title"), application, choose_),
      wideIcons_(iconPrefix(bus, "wide")) {
  glyph_.setId(applicationName);
  glyph_.setTitle(applicationName);
  sd_event_source* presenting = nullptr;
  sd_event_add_defer(loop, &presenting, present, this);
  presenting_.reset(presenting);
  announce(toGlyph);
}

std::function<void(const MenuItem&)> PanelButton::updating(
    std::function<void(const MenuItem&)> choose) {
  return [this, choose = std::move(choose)](const MenuItem& item) {
    choose(item);
    if (menu_) menu_->update();
    tiles_.updateMenus();
  };
}

void PanelButton::setImage(const std::optional<Image>& image) {
  const auto* const symbol = image ? std::get_if<Symbol>(&image->content) : nullptr;
  const auto shown = symbol != nullptr ? std::optional(*symbol) : std::nullopt;
  if (shown == symbol_) return;
  symbol_ = shown;
  announce(toGlyph);
}

void PanelButton::setTitle(std::string_view title) {
  title_.clear();
  setLabel(title);
  announce(toGlyph | toTitle);
}

void PanelButton::setAttributedTitle(const AttributedString& title) {
  const bool isAnother = title != title_;
  title_ = title;
  std::string text;
  for (const TextRun& run : title) text += run.text;
  setLabel(trimmed(text));  // panels keep a distance of their own
  // Tiles may differ where the title does not: they have another place for each figure.
  announce(isAnother ? toGlyph | toTitle : toTitle);
}

void PanelButton::setLabel(std::string_view label) {
  glyph_.setLabel(label);
  tiles_.followTexts();
}

void PanelButton::setToolTip(std::string_view text) {
  glyph_.setToolTip(text);
  tiles_.followTexts();
}

void PanelButton::setAccessibilityLabel(std::string_view text) {
  glyph_.setDescription(text);
  tiles_.followTexts();
}

void PanelButton::announce(unsigned changes) {
  changes_ |= changes;
  sd_event_source_set_enabled(presenting_.get(), SD_EVENT_ONESHOT);
}

int PanelButton::present(sd_event_source*, void* button) {
  auto& self = *static_cast<PanelButton*>(button);
  const unsigned changes = std::exchange(self.changes_, 0U);
  const bool isNewPanel = (changes & toPanel) != 0;
  if ((changes & (toPanel | toGlyph)) != 0) self.showGlyph();
  if (isNewPanel) self.glyph_.registerItem();
  if ((changes & (toPanel | toTitle)) != 0) self.showTiles(isNewPanel);
  return 0;
}

void PanelButton::showGlyph() {
  const bool isWide = form_ == TitleForm::wide && !title_.empty();
  std::vector<std::string> wide;
  if (isWide) wide.push_back(artwork::wideIcon(symbol_, title_));
  const auto names = wideIcons_.hold(wide);
  complaint_.update(names ? nullptr : IconFolder::failure);
  glyph_.setIcon(isWide && names ? wideIcons_.file(names->front()) : iconOf(symbol_));
}

void PanelButton::showTiles(bool isNewPanel) {
  const bool hasTiles = form_ == TitleForm::tiles && !title_.empty();
  tiles_.show(hasTiles ? application_.titleTiles() : std::vector<Tile>{}, isNewPanel);
}

void PanelButton::attachMenu() { menu_.emplace(bus_, application_, choose_); }

void PanelButton::followMenu() {
  if (menu_) menu_->follow(glyph_.toolTip());
  tiles_.followMenus(glyph_.toolTip());
}

void PanelButton::show() {
  panels_.emplace(bus_, [this](const std::string& process) { enterPanel(process); });
}

void PanelButton::enterPanel(const std::string& process) {
  form_ = titleForm(process);
  announce(toPanel);
}

}  // namespace lumowatt::freedesktop
