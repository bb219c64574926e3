#pragma once

#include <functional>
#include <list>
#include <string_view>
#include <vector>

#include "artwork/svg.h"
#include "base/error_report.h"
#include "graphics/tile.h"
#include "menubar/desktop.h"
#include "platform/freedesktop/bus/sd.h"
#include "platform/freedesktop/menu/server.h"
#include "platform/freedesktop/tray/icon_folder.h"
#include "platform/freedesktop/tray/status_item.h"

namespace lumowatt::freedesktop {

/// Items that show the title beside the glyph's item, one item for each tile, for a panel that
/// shows no labels.
class TitleTiles {
 public:
  /// The items have the texts of `glyph`, the menu of `application`, and icons whose names begin
  /// with `prefix`. `loop`, `glyph` and `application` must outlive the tiles.
  TitleTiles(sd_event* loop, const StatusItem& glyph, std::string_view prefix,
             ApplicationDelegate& application, std::function<void(const Choice&)> choose,
             StatusItem::Handlers handlers);

  /// Makes the next call of `show` register the tiles with another panel. `addsOnTheLeft` is true
  /// if that panel adds new items to the left of the existing items.
  void enterPanel(bool addsOnTheLeft);

  /// Replaces the shown tiles with `tiles`, from left to right. Registers a tile only after the
  /// panel has placed the previous item, so the handler `onPlaced` must call `show` again. Must not
  /// be called from the menu of a tile, because the call can destroy that tile. On failure, removes
  /// all tiles, which would be stale, and reports the reason on the standard error.
  void show(std::vector<Tile> tiles, artwork::Ink ink);

  /// Copies the texts of the glyph's item to the tiles.
  void copyTexts();

  /// Updates the report in the closed menus (`MenuServer::updateRows`).
  void updateMenuRows(std::string_view report);

  /// Replaces the menus of the tiles.
  void updateMenus(const Menu& menu);

 private:
  /// Tile with a separate connection: a panel shows an item until the item's connection closes.
  struct Item {
    Item(Bus connection, sd_event* loop, const std::string& icons, ApplicationDelegate& application,
         const std::function<void(const Choice&)>& choose, const StatusItem::Handlers& handlers)
        : bus(std::move(connection)),
          status(bus.get(), loop, icons, handlers),
          menu(bus.get(), application, choose) {}

    Bus bus;
    StatusItem status;
    MenuServer menu;
    bool isRegistered = false;
  };

  bool areConnected() const;

  Result<> present(const std::vector<Tile>& tiles, artwork::Ink ink);
  void registerItems();

  sd_event* loop_;
  const StatusItem& glyph_;
  ApplicationDelegate& application_;
  std::function<void(const Choice&)> choose_;
  StatusItem::Handlers handlers_;
  IconFolder icons_;
  bool addsOnTheLeft_ = false;
  artwork::Ink ink_ = artwork::Ink::unknown;
  std::vector<Tile> shown_;  ///< in the order of `items_`, which is the order of registration
  std::list<Item> items_;
  RecurringError error_{"cannot show the title beside the glyph"};
};

}  // namespace lumowatt::freedesktop
