#include "platform/freedesktop/user/picture_viewer.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <string>

#include "base/error_report.h"
#include "platform/freedesktop/user/child.h"
#include "platform/freedesktop/user/environment.h"
#include "platform/freedesktop/user/programs.h"
#include "platform/freedesktop/user/user_file.h"
#include "platform/posix/descriptor.h"

namespace lumowatt::freedesktop {

namespace {

constexpr double scale = 2.0;  // sharp on a dense screen, and when a viewer fits it to its window

Result<> open(const Drawing& picture, Appearance appearance, BitmapFactory& bitmaps) {
  const std::string folder = runtimeFolder();
  if (folder.empty()) return Failure{"the session has no runtime folder"};
  const auto bitmap = bitmaps.draw(picture, scale, appearance);
  if (!bitmap) return bitmap.failure();
  const auto png = (*bitmap)->encodePng();
  if (!png) return Failure{"could not encode png"};
  const std::string path = folder + "/lumowatt-chart.png";
  ::unlink(path.c_str());  // whatever was there, be it a link, it is replaced by a new file
  if (const Result<> written = replaceUserFile(path, *png); !written) return written.failure();
  if (!startFirst(pictureViewerCommands(path)))
    return Failure{"no program that shows pictures can be started"};
  return {};
}

/// Lets the signals that the loop waits for end this process as they end any.
void unblockSignals() {
  sigset_t none{};
  ::sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

/// Starts a copy of this process, in which it returns 0. Fails also where no file can be opened,
/// which watching the copy takes.
Result<pid_t> startCopy() {
  const Descriptor exemptFlags(::eventfd(0, EFD_CLOEXEC));
  const pid_t child = exemptFlags.isOpen() ? ::fork() : -1;
  if (child < 0) return systemFailure(errno);
  return child;
}

}  // namespace

void PictureViewer::show(const Drawing& picture, Appearance appearance, BitmapFactory& bitmaps) {
  if (drawing_) return;
  const Result<pid_t> child = startCopy();
  if (!child) {
    reportError("cannot show the chart", child.failure().reason);
    startDetached(loop_, bellCommands());
  } else if (*child > 0) {
    drawing_ = watchChild(loop_, *child, [this](bool) { drawing_.reset(); });
  } else {
    unblockSignals();
    const Result<> opened = open(picture, appearance, bitmaps);
    if (!opened) {
      reportError("cannot show the chart", opened.failure().reason);
      startFirst(bellCommands());
    }
    ::_exit(opened ? EXIT_SUCCESS : EXIT_FAILURE);
  }
}

}  // namespace lumowatt::freedesktop
