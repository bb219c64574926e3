#include "platform/freedesktop/user/picture_viewer.h"

#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "platform/freedesktop/user/programs.h"
#include "platform/freedesktop/user/text.h"
#include "platform/freedesktop/user/user_file.h"

namespace lumowatt::freedesktop {

namespace {

/// Returns what went wrong; null when it is shown.
const char* open(const Drawing& picture, Appearance appearance, BitmapFactory& bitmaps) {
  const std::string folder = environmentVariable("XDG_RUNTIME_DIR");
  if (!folder.starts_with('/')) return "this session has no runtime folder for it";
  const auto bitmap = bitmaps.draw(picture, 1.0, appearance);
  const auto png = bitmap ? bitmap->encodePng() : std::nullopt;
  if (!png) return "it cannot be drawn";
  const std::string path = folder + "/lumowatt-chart.png";
  ::unlink(path.c_str());  // whatever was there, be it a link, it is replaced by a new file
  if (!replaceUserFile(path, *png)) return "its file cannot be written";
  return startFirst(pictureViewerCommands(path)) ? nullptr : "there is no program to show it";
}

/// The signals that the loop waits for are to end this process as they end any.
void takeSignals() {
  sigset_t none{};
  ::sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

}  // namespace

void PictureViewer::show(const Drawing& picture, Appearance appearance, BitmapFactory& bitmaps) {
  const bool isBusy = child_ > 0 && ::kill(child_, 0) == 0;
  if (isBusy) return;
  child_ = ::fork();
  if (child_ > 0) return;
  if (child_ == 0) takeSignals();
  const char* const error =
      child_ == 0 ? open(picture, appearance, bitmaps) : "no process can be started";
  if (error != nullptr) {
    std::fprintf(stderr, "lumowatt: the chart is not shown: %s\n", error);
    startFirst(bellCommands());
  }
  if (child_ == 0) ::_exit(error == nullptr ? EXIT_SUCCESS : EXIT_FAILURE);
}

}  // namespace lumowatt::freedesktop
