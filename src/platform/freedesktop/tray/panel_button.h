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

/// The application's items in the panel: the item of the glyph and, on a panel that shows no
/// labels, the tiles of the title. All items have the same tool tip and the same menu.
class PanelButton : public StatusButton {
 public:
  /// `icons` is the folder of the glyph's icons. Calls `choose` with each choice that the user
  /// makes in a menu. `application` must outlive the button.
  PanelButton(sd_bus* bus, sd_event* loop, std::string icons, ApplicationDelegate& application,
              std::function<void(const Choice&)> choose);

  void show(ButtonContents contents) override;
  void setImage(const std::optional<Image>& image) override;
  void setTitle(std::string_view title) override;

  /// Sets the color of icons for panels that do not recolor them.
  void setInk(artwork::Ink ink);

  /// Adds the menu, and sets the id by which a panel remembers the position of the glyph.
  void attachMenu(std::string_view id);

  /// Registers with the running panel, if any, and with each panel that appears later.
  void watchPanels();

  /// Updates the report in the closed menus. The text of the report is that of the tool tip.
  void updateMenuRows();

 private:
  enum Change : unsigned { glyphChange = 1, titleChange = 2, panelChange = 4 };

  void enterPanel(const std::string& process);

  /// Schedules the updates for these changes for the end of this iteration of the loop.
  void scheduleUpdate(unsigned changes);
  static int update(sd_event_source* source, void* button);
  /// Opens the menu in the launcher if the panel shows no menus. Returns false for other panels,
  /// which open the menu themselves.
  bool openMenu();

  /// Returns the symbol of the battery, or `artwork::noBattery` if the symbol or the title is
  /// missing.
  Symbol shownSymbol() const;
  /// Returns the title, or the text that replaces the title.
  AttributedString shownTitle() const;
  void showGlyph();
  void showTexts();
  void showTiles();

  /// Returns the handlers of all items. They open the menu, and register the next tile when an item
  /// has been placed.
  StatusItem::Handlers handlers();

  /// Returns a function that calls `choose` and then updates all menus.
  std::function<void(const Choice&)> withMenuUpdate(std::function<void(const Choice&)> choose);

  sd_bus* bus_;
  ApplicationDelegate& application_;
  std::function<void(const Choice&)> choose_;
  LauncherMenu launcher_;
  StatusItem glyph_;
  std::optional<MenuServer> menu_;
  TitleTiles tiles_;
  IconFolder wideIcons_;
  RecurringError error_{"cannot show the title in the icon"};
  // With this form, no icons are written before a panel appears.
  PanelTraits panel_{.form = TitleForm::label};
  bool hasIcon_ = true;  ///< false if a wide icon could not be written; `show` retries
  std::optional<Symbol> symbol_;
  Title title_;  ///< empty if `text_` replaces the title
  std::string text_;
  artwork::Ink ink_ = artwork::Ink::unknown;
  unsigned changes_ = 0;
  EventSource updateSource_;
  std::optional<PanelWatch> panels_;
};

}  // namespace lumowatt::freedesktop
