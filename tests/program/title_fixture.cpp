#include "program/title_fixture.h"

namespace lumowatt {

void TitleTest::chooseMode(int id) const {
  panel->open();
  EXPECT_EQ(panel->click(id), "");
}

Names TitleTest::iconFiles() const {
  Names names;
  if (!std::filesystem::exists(icons())) return names;
  for (const auto& entry : std::filesystem::directory_iterator(icons())) {
    EXPECT_EQ(entry.path().extension(), ".svg");
    names.push_back(entry.path().stem());
  }
  return names;
}

void TitleTest::replacePanel(const char* process) {
  panel.reset();
  ProcessName::set(process);
  panel = std::make_unique<Panel>(session);
}

void TilesTest::startWithTile() {
  start();
  panel->waitForItems(2);
  panel->open();
}

std::ptrdiff_t pathCount(const std::string& svg) {
  std::ptrdiff_t count = 0;
  for (std::size_t at = svg.find("<path"); at != std::string::npos;
       at = svg.find("<path", at + 1)) {
    ++count;
  }
  return count;
}

}  // namespace lumowatt
