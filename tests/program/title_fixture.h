#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "program/item_fixture.h"
#include "program/menu_ids.h"

namespace lumowatt {

/// The application in a session whose panel is the process of the test's name.
class TitleTest : public ItemTest {
 protected:
  explicit TitleTest(const char* panelProcess, const std::string& busConfiguration = "")
      : ItemTest(busConfiguration, panelProcess) {}

  std::filesystem::path icons() const { return user.path() / "runtime/lumowatt"; }

  /// Chooses what the title shows.
  void chooseMode(int id) const;

  /// The names of the icons that are there, without the file's type.
  Names iconFiles() const;

  /// The connection of the item that was registered as the `index`th.
  const char* connection(std::size_t index) const { return panel->registered.at(index).c_str(); }

  /// Whether an item that was registered is still there.
  bool isThere(std::size_t index) const { return panel->isOwned(connection(index)); }

  /// Has the session another panel, as a process of that name.
  void replacePanel(const char* process);
};

/// How many paths an SVG file has.
std::ptrdiff_t pathCount(const std::string& svg);

}  // namespace lumowatt
