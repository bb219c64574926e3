#include "platform/freedesktop/user/user_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>

#include "platform/posix/descriptor.h"

namespace lumowatt::freedesktop {

namespace {

constexpr mode_t folderMode = 0700;
constexpr mode_t fileMode = 0600;

std::string folderOf(const std::string& path) { return path.substr(0, path.rfind('/')); }

/// Creates a folder and its missing parents. Returns the errno of the first folder that cannot be
/// created; 0 on success.
int createFolders(const std::string& folder) {
  int error = 0;
  for (std::size_t end = 0; end != std::string::npos;) {
    end = folder.find('/', end + 1);
    const bool created = ::mkdir(folder.substr(0, end).c_str(), folderMode) == 0;
    if (!created && errno != EEXIST && error == 0) error = errno;
  }
  return error;
}

/// Returns the target of a chain of symbolic links; the path itself if the target is missing.
std::string resolveLinks(const std::string& path) {
  std::array<char, PATH_MAX> resolved{};
  return ::realpath(path.c_str(), resolved.data()) != nullptr ? resolved.data() : path;
}

/// Writes the new file and flushes it to the disk. Returns false on failure.
bool writeAndSync(const Descriptor& file, std::string_view contents, mode_t mode) {
  return ::fchmod(file.number(), mode) == 0 && file.write(contents) && ::fsync(file.number()) == 0;
}

}  // namespace

FileContents readUserFile(const std::string& path) {
  const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (!file.isOpen()) return {.exists = errno != ENOENT};
  struct stat status {};
  if (::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode)) return {.exists = true};

  std::string text;
  std::array<char, 4096> chunk{};
  while (text.size() <= userFileLimit) {
    const ssize_t count = ::read(file.number(), chunk.data(), chunk.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) break;
    if (count == 0) return {.exists = true, .text = text};
    text.append(chunk.data(), static_cast<std::size_t>(count));
  }
  return {.exists = true};
}

Result<> replaceUserFile(const std::string& path, std::string_view contents) {
  if (path.empty()) return systemFailure(ENOENT);
  const std::string target = resolveLinks(path);
  const int folderError = createFolders(folderOf(target));
  struct stat status {};
  const bool exists = ::stat(target.c_str(), &status) == 0;
  if (exists && !S_ISREG(status.st_mode)) return Failure{target + " is not a regular file"};

  std::string temporary = target + ".XXXXXX";
  Descriptor file(::mkostemp(temporary.data(), O_CLOEXEC));
  if (!file.isOpen()) {
    return systemFailure(errno == ENOENT && folderError != 0 ? folderError : errno);
  }
  const bool complete =
      writeAndSync(file, contents, exists ? status.st_mode & 07777U : fileMode) && file.close();
  if (complete && std::rename(temporary.c_str(), target.c_str()) == 0) return {};
  const int error = errno;
  ::unlink(temporary.c_str());
  return systemFailure(error);
}

}  // namespace lumowatt::freedesktop
