#include "platform/linux/desktop/chart_viewer.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "platform/linux/desktop/programs.h"
#include "platform/linux/desktop/text.h"
#include "platform/linux/desktop/user_file.h"

namespace lumowatt::desktop {

namespace {

/// Returns what went wrong; null when it is shown.
const char* show(const Drawing& picture, Appearance appearance, BitmapFactory& bitmaps) {
  const std::string folder = environmentVariable("XDG_RUNTIME_DIR");
  if (!folder.starts_with('/')) return "this session has no runtime folder for it";
  const auto bitmap = bitmaps.draw(picture, 1.0, appearance);
  const auto png = bitmap ? bitmap->encodePng() : std::nullopt;
  if (!png) return "it cannot be drawn";
  const std::string path = folder + "/lumowatt-chart.png";
  if (!replaceUserFile(path, *png)) return "its file cannot be written";
  return startFirst(pictureViewerCommands(path)) ? nullptr : "there is no program to show it";
}

}  // namespace

void showPicture(const Drawing& picture, Appearance appearance, BitmapFactory& bitmaps) {
  const pid_t child = ::fork();
  if (child > 0) return;
  const char* const error =
      child == 0 ? show(picture, appearance, bitmaps) : "no process can be started";
  if (error != nullptr) {
    std::fprintf(stderr, "lumowatt: the chart is not shown: %s\n", error);
    startFirst(bellCommands());
  }
  if (child == 0) ::_exit(error == nullptr ? EXIT_SUCCESS : EXIT_FAILURE);
}

}  // namespace lumowatt::desktop
