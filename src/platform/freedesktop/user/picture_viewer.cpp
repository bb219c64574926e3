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

constexpr double scale = 2.0;  // sharp on a dense screen, and when a viewer enlarges the picture

Result<> drawAndOpen(const Drawing& picture, Appearance appearance, BitmapFactory& bitmaps) {
  const std::string folder = runtimeFolder();
  if (folder.empty()) return Failure{"the session has no runtime folder"};
  const auto bitmap = bitmaps.draw(picture, scale, appearance);
  if (!bitmap) return bitmap.failure();
  const auto png = (*bitmap)->encodePng();
  if (!png) return Failure{"could not encode png"};
  const std::string path = folder + "/lumowatt-chart.png";
  ::unlink(path.c_str());  // replace an existing file, even a symbolic link, by a new file
  if (const Result<> written = replaceUserFile(path, *png); !written) return written.failure();
  if (!startFirst(pictureViewerCommands(path)))
    return Failure{"no program that shows pictures can be started"};
  return {};
}

/// Unblocks the signals that the event loop handles, so that they terminate this process.
void unblockSignals() {
  sigset_t none{};
  ::sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

/// Forks this process. Returns the child's process id, or 0 in the child. Also fails if no file
/// descriptor is available, because `watchChild` needs one.
Result<pid_t> forkProcess() {
  const Descriptor probe(::eventfd(0, EFD_CLOEXEC));
  const pid_t child = probe.isOpen() ? ::fork() : -1;
  if (child < 0) return systemFailure(errno);
  return child;
}

}  // namespace

void PictureViewer::show(const Drawing& picture, Appearance appearance, BitmapFactory& bitmaps) {
  if (drawing_) return;
  const Result<pid_t> child = forkProcess();
  if (!child) {
    reportError("cannot show the chart", child.failure().reason);
    startDetached(loop_, bellCommands());
  } else if (*child > 0) {
    drawing_ = watchChild(loop_, *child, [this](bool) { drawing_.reset(); });
  } else {
    unblockSignals();
    const Result<> opened = drawAndOpen(picture, appearance, bitmaps);
    if (!opened) {
      reportError("cannot show the chart", opened.failure().reason);
      startFirst(bellCommands());
    }
    ::_exit(opened ? EXIT_SUCCESS : EXIT_FAILURE);
  }
}

}  // namespace lumowatt::freedesktop
