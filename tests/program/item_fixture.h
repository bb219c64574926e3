#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "program/panel.h"
#include "program/process_name.h"
#include "program/program.h"

namespace lumowatt {

using Names = std::vector<std::string>;

/// The D-Bus error of a call whose arguments make no sense.
inline constexpr auto invalidArguments = "org.freedesktop.DBus.Error.InvalidArgs";

/// The built program as the item of a session of its own: a mocked machine, a private bus, empty
/// folders of the user's, and no program but those that the test puts there.
class ItemTest : public testing::Test {
 protected:
  /// On a bus with further elements in its configuration, in a panel whose process has that name:
  /// one that shows labels, unless it is named.
  explicit ItemTest(const std::string& busConfiguration = "",
                    const char* panelProcess = "ayatana-indicat")
      : panelName(panelProcess), session(busConfiguration) {}

  /// Starts the program. With a panel it is registered there when this returns.
  void start();

  /// Starts it in a time that is 360 times as fast, with a further library to preload. It has a
  /// chart to choose when this returns.
  void startWithChart(const std::string& library = "");

  /// Kills it, and returns when the session knows.
  void stop();
  std::unique_ptr<Process> startAnother(const std::string& library = "") const;

  /// Puts a program into the one folder where programs are looked for. It is a shell script, and
  /// finds the folder of its traces in $traces.
  void install(const std::string& name, const std::string& script) const;

  /// The contents of a file that an installed program leaves below `traces`, once it is there.
  std::string trace(const std::string& name) const;

  /// Chooses an item of the menu, whose title must be that.
  void choose(int id, const std::string& title) const;

  /// Opens the menu and chooses the chart, which must be there.
  void chooseChart() const;

  std::filesystem::path configuration() const { return user.path() / "config"; }
  std::filesystem::path preferences() const { return configuration() / "lumowatt/preferences"; }
  std::filesystem::path traces() const { return user.path() / "traces"; }

  /// The program, what it gets of the environment beside the machine and the bus, and the command
  /// that it is started by.
  std::string program = LUMOWATT_PROGRAM;
  Environment variables;
  std::vector<std::string> prefix;

  ProcessName panelName;
  TemporaryFolder user;
  Machine machine{anyMachine};
  SessionBus session;
  std::unique_ptr<Panel> panel = std::make_unique<Panel>(session);
  std::unique_ptr<Process> item;
};

}  // namespace lumowatt
