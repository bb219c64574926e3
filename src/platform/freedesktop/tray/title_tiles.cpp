#include "platform/freedesktop/tray/title_tiles.h"

#include <algorithm>
#include <string>
#include <utility>

#include "artwork/tile_icon.h"
#include "platform/freedesktop/bus/session_bus.h"

namespace lumowatt::freedesktop {

namespace {

/// Names a tile's item after the glyph's: "Lumowatt-title", the second one "Lumowatt-title-2".
/// Panels that order items by name have them after the glyph.
void nameAfter(const StatusItem& glyph, std::size_t tile, StatusItem& item) {
  const std::string number = std::to_string(tile);
  item.setId(glyph.id() + (tile == 1 ? "-title" : "-title-" + number));
  item.setTitle(glyph.title() + (tile == 1 ? " title" : " title " + number));
}

}  // namespace

TitleTiles::TitleTiles(sd_event* loop, const StatusItem& glyph, std::string_view prefix,
                       ApplicationDelegate& application, std::function<void(const Choice&)> choose)
    : loop_(loop),
      glyph_(glyph),
      application_(application),
      choose_(std::move(choose)),
      icons_(prefix) {}

void TitleTiles::show(const std::vector<Tile>& tiles, bool isNewPanel) {
  if (!areConnected()) {  // those are gone from the panel
    items_.clear();
    shown_.clear();
  }
  if (tiles == shown_ && !isNewPanel) return;
  const Result<> presented = present(tiles, isNewPanel);
  if (!presented) {
    items_.clear();
    static_cast<void>(icons_.replaceIcons({}));
  }
  shown_ = presented ? tiles : std::vector<Tile>{};  // so that it is tried again
  complaint_.update(presented);
}

bool TitleTiles::areConnected() const {
  return std::ranges::all_of(items_,
                             [](const Item& item) { return sd_bus_is_open(item.bus.get()) > 0; });
}

Result<> TitleTiles::present(const std::vector<Tile>& tiles, bool isNewPanel) {
  std::vector<std::string> svgs;
  svgs.reserve(tiles.size());
  for (const Tile& tile : tiles) svgs.push_back(artwork::tileIcon(tile));
  const auto names = icons_.replaceIcons(svgs);
  if (!names) return names.failure();

  while (items_.size() > names->size()) items_.pop_back();
  while (items_.size() < names->size()) {
    Result<Bus> bus = openSessionBus(loop_);
    if (!bus) return bus.failure();
    Item& item = items_.emplace_back(std::move(*bus), loop_, icons_.path(), application_, choose_);
    nameAfter(glyph_, items_.size(), item.status);
    item.status.setTexts(glyph_);
  }
  auto name = names->begin();
  for (Item& item : items_) {
    item.status.setIcon(*name++);
    if (isNewPanel || !item.isRegistered) item.status.registerItem();
    item.isRegistered = true;
  }
  return {};
}

void TitleTiles::followTexts() {
  for (Item& item : items_) item.status.setTexts(glyph_);
}

void TitleTiles::followMenus(std::string_view report) {
  for (Item& item : items_) item.menu.follow(report);
}

void TitleTiles::updateMenus(const Menu& menu) {
  for (Item& item : items_) item.menu.update(menu);
}

}  // namespace lumowatt::freedesktop
