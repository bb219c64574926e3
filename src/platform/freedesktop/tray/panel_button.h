#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "artwork/svg.h"
#include "base/error_report.h"
#include "menubar/desktop.h"
#include "platform/freedesktop/bus/sd.h"
#include "platform/freedesktop/menu/launcher_menu.h"
#include "platform/freedesktop/menu/server.h"
#include "platform/freedesktop/tray/icon_folder.h"
#include "platform/freedesktop/tray/panel_traits.h"
#include "platform/freedesktop/tray/panel_watch.h"
#include "platform/freedesktop/tray/status_item.h"
#include "platform/freedesktop/tray/title_tiles.h"

namespace lumowatt::freedesktop {

/// What the application has in the panel: the item that is the glyph and, on a panel that shows no
/// labels, the title's tiles. All of them have the same tool tip and the same menu.
class PanelButton : public StatusButton {
 public:
  /// The glyph's icons lie in the folder `icons`. Calls `choose` with each choice that is made in
  /// the menu. The application must outlive it.
  PanelButton(sd_bus* bus, sd_event* loop, std::string icons, ApplicationDelegate& application,
              std::function<void(const Choice&)> choose);

  void show(ButtonContents contents) override;
  void setImage(const std::optional<Image>& image) override;
  void setTitle(std::string_view title) override;

  /// Sets the color of icons for panels that do not recolor them.
  void setInk(artwork::Ink ink);

  /// Adds the menu, and sets the name by which a panel keeps the glyph's place.
  void attachMenu(std::string_view id);

  /// Registers with the panel that is there, and with each that appears later.
  void watchPanels();

  /// Has the closed menu follow the tool tip, which is the menu's report.
  void followMenu();

 private:
  enum Change : unsigned { toGlyph = 1, toTitle = 2, toPanel = 4 };

  void enterPanel(const std::string& process);

  /// Schedules what depends on these changes for the end of this turn of the loop.
  void scheduleUpdate(unsigned changes);
  static int update(sd_event_source* source, void* button);
  /// Opens the menu for a panel that has none. False for a panel that does it itself.
  bool openMenu();

  /// The symbol of the battery, or of none.
  Symbol shownSymbol() const;
  /// The title, or the text that stands in its place.
  AttributedString shownTitle() const;
  void showGlyph();
  void showTexts();
  void showTiles();

  StatusItem::Handlers handlers();

  /// Calls `choose` with a choice from one of the menus, and updates them all.
  std::function<void(const Choice&)> updatingMenus(std::function<void(const Choice&)> choose);

  sd_bus* bus_;
  ApplicationDelegate& application_;
  std::function<void(const Choice&)> choose_;
  LauncherMenu launcher_;
  StatusItem glyph_;
  std::optional<MenuServer> menu_;
  TitleTiles tiles_;
  IconFolder wideIcons_;
  RecurringError error_{"cannot show the title in the icon"};
  PanelTraits panel_{.form = TitleForm::label};  // before there is one: no icons are made
  bool hasIcon_ = true;  ///< false when a wide icon could not be written: it is tried again
  std::optional<Symbol> symbol_;
  Title title_;  ///< empty where a text stands in its place
  std::string text_;
  artwork::Ink ink_ = artwork::Ink::unknown;
  unsigned changes_ = 0;
  EventSource updating_;
  std::optional<PanelWatch> panels_;
};

}  // namespace lumowatt::freedesktop
