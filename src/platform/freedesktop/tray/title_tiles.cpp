#include "platform/freedesktop/tray/title_tiles.h"

#include <algorithm>
#include <string>
#include <utility>

#include "artwork/tile_icon.h"
#include "platform/freedesktop/bus/session_bus.h"

namespace lumowatt::freedesktop {

namespace {

/// Returns the name of a tile in a panel's list of items: "Lumowatt title" for the first tile,
/// "Lumowatt title 2" for the second.
std::string titleOf(const StatusItem& glyph, std::size_t tile) {
  return glyph.title() + (tile == 1 ? " title" : " title " + std::to_string(tile));
}

}  // namespace

TitleTiles::TitleTiles(sd_event* loop, const StatusItem& glyph, std::string_view prefix,
                       ApplicationDelegate& application, std::function<void(const Choice&)> choose,
                       StatusItem::Handlers handlers)
    : loop_(loop),
      glyph_(glyph),
      application_(application),
      choose_(std::move(choose)),
      handlers_(std::move(handlers)),
      icons_(prefix, "-symbolic") {}

void TitleTiles::enterPanel(bool addsOnTheLeft) {
  addsOnTheLeft_ = addsOnTheLeft;
  for (Item& item : items_) item.isRegistered = false;
}

void TitleTiles::show(std::vector<Tile> tiles, artwork::Ink ink) {
  if (!areConnected()) {  // a panel no longer shows items without a connection
    items_.clear();
    shown_.clear();
  }
  if (addsOnTheLeft_) std::ranges::reverse(tiles);
  if (tiles == shown_ && ink == ink_) return registerItems();
  ink_ = ink;
  const Result<> presented = present(tiles, ink);
  if (!presented) {
    items_.clear();
    static_cast<void>(icons_.replaceIcons({}));
  }
  // Empty after a failure, so that the next call retries.
  shown_ = presented ? std::move(tiles) : std::vector<Tile>{};
  error_.update(presented);
  registerItems();
}

bool TitleTiles::areConnected() const {
  return std::ranges::all_of(items_,
                             [](const Item& item) { return sd_bus_is_open(item.bus.get()) > 0; });
}

Result<> TitleTiles::present(const std::vector<Tile>& tiles, artwork::Ink ink) {
  std::vector<std::string> svgs;
  svgs.reserve(tiles.size());
  for (const Tile& tile : tiles) svgs.push_back(artwork::tileIcon(tile, ink));
  const auto names = icons_.replaceIcons(svgs);
  if (!names) return names.failure();

  while (items_.size() > names->size()) items_.pop_back();
  while (items_.size() < names->size()) {
    Result<Bus> bus = openSessionBus(loop_);
    if (!bus) return bus.failure();
    Item& item = items_.emplace_back(std::move(*bus), loop_, icons_.path(), application_, choose_,
                                     handlers_);
    // All items have the same Id, because Xfce does not draw some items that register at the same
    // time with different new Ids: the entries in Xfce's list of known items conflict.
    item.status.setId(glyph_.id());
    item.status.setTitle(titleOf(glyph_, items_.size()));
    item.status.copyTexts(glyph_);
  }
  auto name = names->begin();
  for (Item& item : items_) item.status.setIcon(*name++);
  return {};
}

void TitleTiles::registerItems() {
  const StatusItem* previous = &glyph_;
  for (Item& item : items_) {
    if (!item.isRegistered && !previous->isPlaced()) return;
    if (!item.isRegistered) item.status.registerItem(StatusItem::Address::connection);
    item.isRegistered = true;
    previous = &item.status;
  }
}

void TitleTiles::copyTexts() {
  for (Item& item : items_) item.status.copyTexts(glyph_);
}

void TitleTiles::updateMenuRows(std::string_view report) {
  for (Item& item : items_) item.menu.updateRows(report);
}

void TitleTiles::updateMenus(const Menu& menu) {
  for (Item& item : items_) item.menu.update(menu);
}

}  // namespace lumowatt::freedesktop
