#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "program/item_fixture.h"
#include "program/menu_ids.h"

namespace lumowatt {

/// Fixture that runs the program with a specific panel, to test how it shows the title.
class TitleTest : public ItemTest {
 protected:
  explicit TitleTest(const char* panelProcess, const std::string& busConfiguration = "")
      : ItemTest(busConfiguration, panelProcess) {}

  /// Returns the folder of the title's icons.
  std::filesystem::path icons() const { return user.path() / "runtime/lumowatt"; }

  /// Chooses in the menu what the title shows.
  void chooseMode(int id) const;

  /// Returns the names of the title's icons, without the extension of their files.
  Names iconFiles() const;

  /// Returns the connection name of the item that was registered at `index`, from 0.
  const char* connection(std::size_t index) const { return panel->registered.at(index).c_str(); }

  /// Returns whether the item that was registered at `index` is still connected to the bus.
  bool isConnected(std::size_t index) const { return panel->isOwned(connection(index)); }

  /// Disconnects the panel and starts another, whose process has this name.
  void replacePanel(const char* process);
};

/// Fixture with a panel that shows only icons, so that the title is shown as tiles.
class TilesTest : public TitleTest {
 protected:
  explicit TilesTest(const std::string& busConfiguration = "")
      : TitleTest("panel-2-systray", busConfiguration) {}

  /// Starts the program, waits until the first tile is registered, and opens the menu.
  void startWithTile();

  /// Returns the name of the icon of the item that was registered at `index`, from 0.
  std::string icon(std::size_t index) const {
    return panel->property("IconName", connection(index));
  }
  std::string iconContents(std::size_t index) const {
    return fileContents(icons() / (icon(index) + ".svg"));
  }
};

/// Counts the paths in an SVG file.
std::ptrdiff_t pathCount(const std::string& svg);

}  // namespace lumowatt
