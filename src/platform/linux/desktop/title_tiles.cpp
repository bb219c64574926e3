#include "platform/linux/desktop/title_tiles.h"

#include <cstdio>
#include <string>
#include <utility>

#include "artwork/tile_icon.h"
#include "platform/linux/desktop/session_bus.h"

namespace lumowatt::desktop {

namespace {

/// Names a tile's item after the glyph's: "Lumowatt-title", the second one "Lumowatt-title-2".
/// Panels that order items by name have them after the glyph.
void nameAfter(const StatusItem& glyph, std::size_t tile, StatusItem& item) {
  const std::string number = std::to_string(tile);
  item.setId(glyph.id() + (tile == 1 ? "-title" : "-title-" + number));
  item.setTitle(glyph.title() + (tile == 1 ? " title" : " title " + number));
}

}  // namespace

TitleTiles::TitleTiles(sd_event* loop, const StatusItem& glyph, ApplicationDelegate& application,
                       std::function<void(const MenuItem&)> choose)
    : loop_(loop), glyph_(glyph), application_(application), choose_(std::move(choose)) {
  sd_event_source* updating = nullptr;
  sd_event_add_defer(loop, &updating, update, this);
  updating_.reset(updating);
  sd_event_source_set_enabled(updating, SD_EVENT_OFF);
}

void TitleTiles::show(std::vector<Tile> tiles) {
  wanted_ = std::move(tiles);
  if (wanted_ != shown_) sd_event_source_set_enabled(updating_.get(), SD_EVENT_ONESHOT);
}

int TitleTiles::update(sd_event_source*, void* tiles) {
  auto& self = *static_cast<TitleTiles*>(tiles);
  const char* const failure = self.present();
  if (failure != nullptr) {
    self.icons_.hold({});
    self.items_.clear();
    self.shown_.clear();
    if (self.failure_ == nullptr) {
      std::fprintf(stderr, "lumowatt: the title is not shown beside the glyph: %s\n", failure);
    }
  }
  self.failure_ = failure;
  return 0;
}

const char* TitleTiles::present() {
  std::vector<std::string> svgs;
  svgs.reserve(wanted_.size());
  for (const Tile& tile : wanted_) svgs.push_back(artwork::tileIcon(tile));
  const auto names = icons_.hold(svgs);
  if (!names) return "its icons cannot be written into the session's runtime folder";

  while (items_.size() > names->size()) items_.pop_back();
  auto item = items_.begin();
  for (const std::string& name : *names) {
    const bool isNew = item == items_.end();
    if (isNew) {
      Bus bus;
      if (const int status = openSessionBus(loop_, bus); status < 0) return busFailure(status);
      item = items_.emplace(item, std::move(bus), loop_, icons_.path(), application_, choose_);
      nameAfter(glyph_, items_.size(), item->status);
      item->status.setTexts(glyph_);
    }
    item->status.setIcon(name);
    if (isNew) item->status.registerItem();
    ++item;
  }
  shown_ = wanted_;
  return nullptr;
}

void TitleTiles::followTexts() {
  for (Item& item : items_) item.status.setTexts(glyph_);
}

void TitleTiles::followMenus(std::string_view report) {
  for (Item& item : items_) item.menu.follow(report);
}

void TitleTiles::registerItems() {
  for (Item& item : items_) item.status.registerItem();
}

}  // namespace lumowatt::desktop
