#include "platform/freedesktop/user/picture_viewer.h"

#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <string>

#include "base/complaint.h"
#include "platform/freedesktop/user/environment.h"
#include "platform/freedesktop/user/programs.h"
#include "platform/freedesktop/user/user_file.h"

namespace lumowatt::freedesktop {

namespace {

Result<> open(const Drawing& picture, Appearance appearance, BitmapFactory& bitmaps) {
  const std::string folder = runtimeFolder();
  if (folder.empty()) return Failure{"this session has no runtime folder for it"};
  const auto bitmap = bitmaps.draw(picture, 1.0, appearance);
  if (!bitmap) complain(bitmap.failure().reason);
  const auto png = bitmap ? (*bitmap)->encodePng() : std::nullopt;
  if (!png) return Failure{"it cannot be drawn"};
  const std::string path = folder + "/lumowatt-chart.png";
  ::unlink(path.c_str());  // whatever was there, be it a link, it is replaced by a new file
  if (!replaceUserFile(path, *png)) return Failure{"its file cannot be written"};
  if (!startFirst(pictureViewerCommands(path))) return Failure{"there is no program to show it"};
  return {};
}

/// Lets the signals that the loop waits for end this process as they end any.
void unblockSignals() {
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
  if (child_ == 0) unblockSignals();
  const Result<> opened =
      child_ == 0 ? open(picture, appearance, bitmaps) : Failure{"no process can be started"};
  if (!opened) {
    complain("the chart is not shown", opened.failure());
    startFirst(bellCommands());
  }
  if (child_ == 0) ::_exit(opened ? EXIT_SUCCESS : EXIT_FAILURE);
}

}  // namespace lumowatt::freedesktop
