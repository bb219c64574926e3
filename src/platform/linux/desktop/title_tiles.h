#pragma once

#include <functional>
#include <list>
#include <string_view>
#include <vector>

#include "graphics/tile.h"
#include "menubar/desktop.h"
#include "platform/linux/desktop/icon_folder.h"
#include "platform/linux/desktop/menu_server.h"
#include "platform/linux/desktop/sd.h"
#include "platform/linux/desktop/status_item.h"

namespace lumowatt::desktop {

/// The title as items of their own beside the glyph's, one for each tile, for a panel that shows no
/// labels.
class TitleTiles {
 public:
  /// The items have the texts of the glyph's and its menu. All that is given must outlive them.
  TitleTiles(sd_event* loop, const StatusItem& glyph, ApplicationDelegate& application,
             std::function<void(const MenuItem&)> choose);

  /// Shows these tiles and no more, once all is done that happens now, which may come from a menu
  /// of theirs. Shows none, rather than some that were true once, when that fails; the reason is
  /// then on the standard error.
  void show(std::vector<Tile> tiles);

  /// Gives the items the texts of the glyph's.
  void followTexts();

  /// Has their menus follow the report.
  void followMenus(std::string_view report);

  /// Registers the items that there are with another panel.
  void registerItems();

 private:
  /// A panel shows an item as long as its connection lasts, so each has its own.
  struct Item {
    Item(Bus connection, sd_event* loop, const std::string& icons, ApplicationDelegate& application,
         const std::function<void(const MenuItem&)>& choose)
        : bus(std::move(connection)),
          status(bus.get(), loop, icons),
          menu(bus.get(), application, choose) {}

    Bus bus;
    StatusItem status;
    MenuServer menu;
  };

  static int update(sd_event_source* source, void* tiles);

  /// Makes what is shown what is wanted. Returns what went wrong; null when nothing did.
  const char* present();

  sd_event* loop_;
  const StatusItem& glyph_;
  ApplicationDelegate& application_;
  std::function<void(const MenuItem&)> choose_;
  IconFolder icons_{"lumowatt-title-"};
  std::vector<Tile> wanted_;
  std::vector<Tile> shown_;
  std::list<Item> items_;
  const char* failure_ = nullptr;  ///< that was told of
  EventSource updating_;
};

}  // namespace lumowatt::desktop
