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

/// The title as items of their own beside the glyph's, one for each tile, for a panel that shows no
/// labels.
class TitleTiles {
 public:
  /// The items have the texts of the glyph's and its menu, and icons whose names begin with
  /// `prefix`. All that is given must outlive them.
  TitleTiles(sd_event* loop, const StatusItem& glyph, std::string_view prefix,
             ApplicationDelegate& application, std::function<void(const Choice&)> choose,
             StatusItem::Handlers handlers);

  /// Has the next tiles shown in another panel, which adds new items on the left or on the right of
  /// those before.
  void enterPanel(bool addsOnTheLeft);

  /// Shows these tiles and no more, from left to right. Registers each once the item before it is
  /// settled: the handler `settled` is to call this again for the rest. Not to be
  /// called from one of their menus: a tile may go away by it. Shows none, rather than some that
  /// were true once, when that fails; the reason is then on the standard error.
  void show(std::vector<Tile> tiles, artwork::Ink ink);

  /// Copies the texts of the glyph's item.
  void copyTexts();

  /// Has their menus follow the report.
  void followMenus(std::string_view report);

  /// Replaces their menus.
  void updateMenus(const Menu& menu);

 private:
  /// A panel shows an item as long as its connection lasts, so each has its own.
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
  std::vector<Tile> shown_;  ///< in the order of the items, which is that of their registration
  std::list<Item> items_;
  RecurringError error_{"cannot show the title beside the glyph"};
};

}  // namespace lumowatt::freedesktop
