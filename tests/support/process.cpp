#include "support/process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

#include "support/files.h"

namespace lumowatt {

namespace {

void redirect(const std::string& path, int flags, int descriptor) {
  const int file = ::open(path.c_str(), flags, 0600);
  if (file < 0 || ::dup2(file, descriptor) < 0) ::_exit(126);
  ::close(file);
}

}  // namespace

ProcessResult runProcess(const std::vector<std::string>& command, const Environment& environment) {
  const TemporaryFolder folder;
  const std::string output = folder.path() / "output";
  const std::string errors = folder.path() / "errors";
  std::vector<char*> arguments;
  arguments.reserve(command.size() + 1);
  for (const std::string& argument : command)
    arguments.push_back(const_cast<char*>(argument.c_str()));
  arguments.push_back(nullptr);

  const pid_t child = ::fork();
  EXPECT_GE(child, 0);
  if (child == 0) {
    for (const auto& [name, value] : environment) ::setenv(name.c_str(), value.c_str(), 1);
    redirect("/dev/null", O_RDONLY, STDIN_FILENO);
    redirect(output, O_WRONLY | O_CREAT, STDOUT_FILENO);
    redirect(errors, O_WRONLY | O_CREAT, STDERR_FILENO);
    ::execvp(arguments[0], arguments.data());
    ::_exit(127);
  }
  int status = 0;
  EXPECT_EQ(::waitpid(child, &status, 0), child);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), fileContents(output),
          fileContents(errors)};
}

}  // namespace lumowatt
