#include "support/process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>

namespace lumowatt {

namespace {

void redirect(const std::string& path, int flags, int descriptor) {
  const int file = ::open(path.c_str(), flags, 0600);
  if (file < 0 || ::dup2(file, descriptor) < 0) ::_exit(126);
  ::close(file);
}

}  // namespace

Process::Process(const std::vector<std::string>& command, const Environment& environment) {
  const std::string output = folder_.path() / "output";
  const std::string errors = folder_.path() / "errors";
  for (const std::string& file : {output, errors}) std::ofstream(file).close();
  std::vector<char*> arguments;
  arguments.reserve(command.size() + 1);
  for (const std::string& argument : command)
    arguments.push_back(const_cast<char*>(argument.c_str()));
  arguments.push_back(nullptr);

  id_ = ::fork();
  EXPECT_GE(id_, 0);
  if (id_ == 0) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);  // the program must not outlive a killed test
    for (const auto& [name, value] : environment) ::setenv(name.c_str(), value.c_str(), 1);
    redirect("/dev/null", O_RDONLY, STDIN_FILENO);
    redirect(output, O_WRONLY | O_APPEND, STDOUT_FILENO);
    redirect(errors, O_WRONLY | O_APPEND, STDERR_FILENO);
    // The program must not inherit other open files of this process.
    ::close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
    ::execvp(arguments[0], arguments.data());
    ::_exit(127);
  }
}

Process::~Process() {
  if (!isRunning()) return;
  send(SIGKILL);
  wait();
}

bool Process::isRunning() {
  int status = 0;
  if (!status_ && ::waitpid(id_, &status, WNOHANG) == id_) status_ = status;
  return !status_.has_value();
}

void Process::send(int signal) const { EXPECT_EQ(::kill(id_, signal), 0); }

long Process::residentMemory() const {
  std::istringstream status(fileContents("/proc/" + std::to_string(id_) + "/status"));
  std::string word;
  while (status >> word && word != "VmRSS:") continue;
  long size = 0;
  status >> size;
  return size;
}

long Process::openFiles() const {
  const std::filesystem::directory_iterator files("/proc/" + std::to_string(id_) + "/fd");
  return std::distance(begin(files), end(files));
}

ProcessResult Process::wait() {
  int status = 0;
  if (!status_) {
    EXPECT_EQ(::waitpid(id_, &status, 0), id_);
    status_ = status;
  }
  return {WIFEXITED(*status_) ? WEXITSTATUS(*status_) : 128 + WTERMSIG(*status_), output(),
          fileContents(folder_.path() / "errors")};
}

ProcessResult runProcess(const std::vector<std::string>& command, const Environment& environment) {
  return Process(command, environment).wait();
}

}  // namespace lumowatt
