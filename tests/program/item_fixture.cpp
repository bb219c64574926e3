#include "program/item_fixture.h"

#include "program/menu_ids.h"

namespace lumowatt {

void ItemTest::start() {
  item = startProcess();
  if (panel) panel->waitForItem();
}

void ItemTest::startWithChart(const std::string& library) {
  item = startProcess(library + " " LUMOWATT_ACCELERATED_CLOCK);
  panel->waitForItem();
  panel->waitUntil([this] {
    panel->open();
    return panel->menuProperty(menu_id::chart, "enabled").get<bool>();
  });
}

void ItemTest::stop() {
  item.reset();
  panel->waitUntil([this] { return !panel->isOwned("com.fernhollow.Lumowatt"); });
  panel->registered.clear();
}

std::unique_ptr<Process> ItemTest::startProcess(const std::string& library) const {
  for (const char* const folder : {"home", "config", "runtime", "programs", "traces"}) {
    std::filesystem::create_directories(user.path() / folder);
  }
  Environment environment = machine.environment(library);
  const Environment defaults{{"DBUS_SESSION_BUS_ADDRESS", session.address()},
                             {"HOME", user.path() / "home"},
                             {"XDG_CONFIG_HOME", configuration()},
                             {"XDG_RUNTIME_DIR", user.path() / "runtime"},
                             {"XDG_CURRENT_DESKTOP", ""},
                             {"WAYLAND_DISPLAY", ""},
                             {"PATH", user.path() / "programs"}};
  environment.insert(environment.end(), defaults.begin(), defaults.end());
  environment.insert(environment.end(), variables.begin(), variables.end());
  std::vector<std::string> command = prefix;
  command.push_back(program);
  return std::make_unique<Process>(command, environment);
}

void ItemTest::install(const std::string& name, const std::string& script) const {
  const std::string file = "programs/" + name;
  user.write(file, "#!/bin/bash\nPATH=/usr/bin:/bin\ntraces=" + traces().string() + "\n" + script);
  std::filesystem::permissions(user.path() / file, std::filesystem::perms::owner_all);
}

std::string ItemTest::waitForTrace(const std::string& name) const {
  panel->waitUntil([&] { return std::filesystem::exists(traces() / name); });
  return fileContents(traces() / name);
}

void ItemTest::chooseChart() const {
  panel->open();
  EXPECT_EQ(panel->menuProperty(menu_id::chart, "enabled"), true);
  EXPECT_EQ(panel->click(menu_id::chart), "");
}

void ItemTest::choose(int id, const std::string& title) const {
  EXPECT_EQ(panel->menuProperty(id, "label"), title);
  EXPECT_EQ(panel->click(id), "");
}

}  // namespace lumowatt
