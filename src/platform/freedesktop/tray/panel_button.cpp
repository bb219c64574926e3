#include "platform/freedesktop/tray/panel_button.h"

#include <utility>

#include "artwork/battery.h"
#include "artwork/svg.h"
#include "artwork/wide_icon.h"
#include "base/text.h"

namespace lumowatt::freedesktop {

namespace {

std::string iconOf(const Symbol& symbol, artwork::Ink ink) {
  const auto* const tint = symbol.tint ? std::get_if<SystemColor>(&*symbol.tint) : nullptr;
  return artwork::iconName(symbol.name, tint != nullptr ? std::optional(*tint) : std::nullopt, ink);
}

/// Returns the prefix for the names of the icons that are generated in this session. The prefix
/// contains the id of the bus, because all sessions of a user share the runtime folder.
std::string iconPrefix(sd_bus* bus, const char* kind) {
  sd_id128_t session{};
  sd_bus_get_bus_id(bus, &session);
  char id[SD_ID128_STRING_MAX];
  return std::string("lumowatt-") + kind + "-" + sd_id128_to_string(session, id) + "-";
}

}  // namespace

PanelButton::PanelButton(sd_bus* bus, sd_event* loop, std::string icons,
                         ApplicationDelegate& application,
                         std::function<void(const Choice&)> choose)
    : bus_(bus),
      application_(application),
      choose_(withMenuUpdate(std::move(choose))),
      launcher_(loop, choose_),
      glyph_(bus, loop, std::move(icons), handlers()),
      tiles_(loop, glyph_, iconPrefix(bus, "title"), application, choose_, handlers()),
      // Without the suffix "-symbolic": Cinnamon draws no file with "symbolic" in its name.
      wideIcons_(iconPrefix(bus, "wide"), "") {
  glyph_.setTitle("Lumowatt");
  sd_event_add_defer(loop, Out(updateSource_), update, this);
  scheduleUpdate(glyphChange);
}

std::function<void(const Choice&)> PanelButton::withMenuUpdate(
    std::function<void(const Choice&)> choose) {
  return [this, choose = std::move(choose)](const Choice& choice) {
    choose(choice);
    const Menu menu = application_.menu();
    if (menu_) menu_->update(menu);
    tiles_.updateMenus(menu);
  };
}

StatusItem::Handlers PanelButton::handlers() {
  return {.openMenu = [this] { return openMenu(); },
          .onPlaced = [this] { scheduleUpdate(titleChange); }};
}

void PanelButton::show(ButtonContents contents) {
  setImage(contents.image);
  if (contents.title.text != title_.text || !hasIcon_) scheduleUpdate(glyphChange);
  title_ = std::move(contents.title);
  std::string text;
  for (const TextRun& run : title_.text) text += run.text;
  text_ = trimmed(text);
  glyph_.setToolTip(contents.toolTip);
  glyph_.setDescription(contents.accessibilityLabel);
  showTexts();
  scheduleUpdate(titleChange);  // even if unchanged, to retry after a failure
}

void PanelButton::setImage(const std::optional<Image>& image) {
  const auto* const symbol = image ? std::get_if<Symbol>(&image->content) : nullptr;
  const auto shown = symbol != nullptr ? std::optional(*symbol) : std::nullopt;
  if (shown == symbol_) return;
  symbol_ = shown;
  scheduleUpdate(glyphChange);
}

void PanelButton::setTitle(std::string_view title) {
  title_ = {};
  text_ = title;
  showTexts();
  scheduleUpdate(glyphChange | titleChange);
}

void PanelButton::setInk(artwork::Ink ink) {
  if (ink == ink_) return;
  ink_ = ink;
  scheduleUpdate(glyphChange | titleChange);
}

bool PanelButton::openMenu() {
  if (panel_.hasNoMenus) launcher_.show(application_.menuWillOpen());
  return panel_.hasNoMenus;
}

void PanelButton::scheduleUpdate(unsigned changes) {
  changes_ |= changes;
  sd_event_source_set_enabled(updateSource_.get(), SD_EVENT_ONESHOT);
}

int PanelButton::update(sd_event_source*, void* button) {
  auto& self = *static_cast<PanelButton*>(button);
  const unsigned changes = std::exchange(self.changes_, 0U);
  if ((changes & (panelChange | glyphChange)) != 0) self.showGlyph();
  if ((changes & panelChange) != 0) {
    self.showTexts();
    if (self.menu_) self.menu_->setCompact(self.panel_.hasHighRows);
    self.glyph_.registerItem(self.panel_.registersPaths ? StatusItem::Address::objectPath
                                                        : StatusItem::Address::connection);
    self.tiles_.enterPanel(self.panel_.addsOnTheLeft);
  }
  if ((changes & (panelChange | titleChange)) != 0) self.showTiles();
  return 0;
}

Symbol PanelButton::shownSymbol() const {
  const bool hasBattery = symbol_ && !title_.text.empty();
  return hasBattery ? *symbol_ : Symbol{.name = std::string(artwork::noBattery)};
}

AttributedString PanelButton::shownTitle() const {
  if (!title_.text.empty()) return title_.text;
  return AttributedString{{" " + text_, Font{}}};
}

void PanelButton::showGlyph() {
  const bool isWide = panel_.form == TitleForm::wide;
  std::vector<std::string> wide;
  if (isWide) wide.push_back(artwork::wideIcon(shownSymbol(), shownTitle()));
  const auto names = wideIcons_.replaceIcons(wide);
  error_.update(names);
  hasIcon_ = static_cast<bool>(names);
  glyph_.setIcon(isWide && names ? wideIcons_.file(names->front()) : iconOf(shownSymbol(), ink_));
}

/// Updates the label and the tool tips. The label is empty if icons show the title, so that no
/// panel shows the title twice.
void PanelButton::showTexts() {
  const bool isLabel = panel_.form == TitleForm::label;
  glyph_.setLabel(isLabel ? (panel_.needsLabelSpacing ? " " : "") + text_ : "");
  glyph_.setToolTipTitle(panel_.remembersToolTips ? glyph_.title() : text_);
  tiles_.copyTexts();
}

void PanelButton::showTiles() {
  tiles_.show(panel_.form == TitleForm::tiles ? title_.tiles : std::vector<Tile>{}, ink_);
}

void PanelButton::attachMenu(std::string_view id) {
  glyph_.setId(id);
  menu_.emplace(bus_, application_, choose_);
}

void PanelButton::updateMenuRows() {
  if (menu_) menu_->updateRows(glyph_.toolTip());
  tiles_.updateMenuRows(glyph_.toolTip());
}

void PanelButton::watchPanels() {
  panels_.emplace(bus_, [this](const std::string& process) { enterPanel(process); });
}

void PanelButton::enterPanel(const std::string& process) {
  panel_ = panelTraits(process);
  scheduleUpdate(panelChange);
}

}  // namespace lumowatt::freedesktop
