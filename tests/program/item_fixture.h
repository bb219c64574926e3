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

/// D-Bus error for invalid arguments of a method call.
inline constexpr auto invalidArguments = "org.freedesktop.DBus.Error.InvalidArgs";

/// Fixture that runs the built program in a private session: a mocked machine, a private bus, empty
/// user folders, and a $PATH that contains only the programs that the test installs.
class ItemTest : public testing::Test {
 protected:
  /// Starts a bus and a panel. `busConfiguration` contains additional elements of the bus's
  /// configuration file. `panelProcess` is the name of the panel's process, by which the program
  /// recognizes panels; the default panel shows labels.
  explicit ItemTest(const std::string& busConfiguration = "",
                    const char* panelProcess = "ayatana-indicat")
      : panelName(panelProcess), session(busConfiguration) {}

  /// Starts the program and waits until it is registered with the panel, if there is one.
  void start();

  /// Starts the program with a clock that is 360 times as fast, and preloads `library` as well.
  /// Waits until the chart in the menu can be chosen.
  void startWithChart(const std::string& library = "");

  /// Kills the program and waits until the bus has released its name.
  void stop();

  /// Starts a process of the program with a preloaded library, without waiting for its
  /// registration.
  std::unique_ptr<Process> startProcess(const std::string& library = "") const;

  /// Installs a shell script in the only folder of $PATH. In the script, $traces is the folder that
  /// `traces` returns.
  void install(const std::string& name, const std::string& script) const;

  /// Waits until an installed program has written a file in `traces`, and returns its contents.
  std::string waitForTrace(const std::string& name) const;

  /// Chooses an item of the menu, and expects that it has this title.
  void choose(int id, const std::string& title) const;

  /// Opens the menu and chooses the chart, which must be enabled.
  void chooseChart() const;

  std::filesystem::path configuration() const { return user.path() / "config"; }
  std::filesystem::path preferences() const { return configuration() / "lumowatt/preferences"; }

  /// Returns the folder in which installed programs record how they were called.
  std::filesystem::path traces() const { return user.path() / "traces"; }

  std::string program = LUMOWATT_PROGRAM;

  /// Environment variables for the program. They override those that the fixture sets.
  Environment variables;

  /// Beginning of the command that starts the program. The program's path is appended.
  std::vector<std::string> prefix;

  ProcessName panelName;
  TemporaryFolder user;
  Machine machine{anyMachine};
  SessionBus session;
  std::unique_ptr<Panel> panel = std::make_unique<Panel>(session);
  std::unique_ptr<Process> item;
};

}  // namespace lumowatt
