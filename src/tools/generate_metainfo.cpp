// Writes the metainfo for software centers, with the releases listed in the changelog:
//
//   generate_metainfo CHANGELOG TEMPLATE FILE
//
// TEMPLATE is the metainfo with a placeholder for the releases.

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "base/output_file.h"
#include "tools/release_notes.h"

namespace lumowatt {

namespace {

Result<std::string> readFile(const char* path) {
  std::FILE* const file = std::fopen(path, "rb");
  if (file == nullptr) return systemFailure(errno);
  std::string contents;
  std::array<char, 4096> buffer{};
  std::size_t length = 0;
  while ((length = std::fread(buffer.data(), 1, buffer.size(), file)) > 0) {
    contents.append(buffer.data(), length);
  }
  const int error = std::ferror(file) == 0 ? 0 : errno;
  std::fclose(file);
  if (error != 0) return systemFailure(error);
  return contents;
}

int fail(const char* path, const Failure& failure) {
  std::fprintf(stderr, "generate_metainfo: %s: %s\n", path, failure.reason.c_str());
  return EXIT_FAILURE;
}

int generate(const char* changelog, const char* source, const char* output) {
  const Result<std::string> changes = readFile(changelog);
  if (!changes) return fail(changelog, changes.failure());
  const auto releases = release_notes::parse(*changes);
  if (!releases) return fail(changelog, releases.failure());
  const Result<std::string> text = readFile(source);
  if (!text) return fail(source, text.failure());
  const Result<std::string> metainfo = release_notes::metainfo(*text, *releases);
  if (!metainfo) return fail(source, metainfo.failure());
  const Result<> written = writeFile(output, *metainfo);
  return written ? EXIT_SUCCESS : fail(output, written.failure());
}

}  // namespace

}  // namespace lumowatt

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fprintf(stderr, "usage: generate_metainfo CHANGELOG TEMPLATE FILE\n");
    return 2;
  }
  return lumowatt::generate(argv[1], argv[2], argv[3]);
}
