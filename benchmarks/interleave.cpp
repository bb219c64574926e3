// Runs several commands once in each round, in random order, and compares their medians:
//
//   interleave ROUNDS COMMAND...
//
// Each command is one argument, split at spaces. Disturbances of the machine affect all commands
// alike, so the ratios to the first command are more reliable than the absolute times. Prints the
// result as a Markdown table.

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

namespace {

struct Cost {
  double milliseconds;
  long kibibytes;  // peak resident set size
};

struct Contender {
  std::string command;
  std::vector<std::string> words;
  std::vector<Cost> costs;
};

std::vector<std::string> split(const std::string& command) {
  std::vector<std::string> words;
  std::size_t start = 0;
  while ((start = command.find_first_not_of(' ', start)) != std::string::npos) {
    const std::size_t end = std::min(command.find(' ', start), command.size());
    words.push_back(command.substr(start, end - start));
    start = end;
  }
  return words;
}

Cost run(const Contender& contender) {
  std::vector<char*> arguments;
  arguments.reserve(contender.words.size() + 1);
  for (const std::string& word : contender.words) {
    arguments.push_back(const_cast<char*>(word.c_str()));
  }
  arguments.push_back(nullptr);

  const auto start = std::chrono::steady_clock::now();
  const pid_t child = ::fork();
  if (child == 0) {
    const int devNull = ::open("/dev/null", O_RDWR);
    ::dup2(devNull, STDIN_FILENO);
    ::dup2(devNull, STDOUT_FILENO);
    ::execvp(arguments[0], arguments.data());
    ::_exit(127);
  }
  int status = 0;
  rusage usage{};
  const bool isReaped = child > 0 && ::wait4(child, &status, 0, &usage) == child;
  const std::chrono::duration<double, std::milli> elapsed =
      std::chrono::steady_clock::now() - start;
  if (!isReaped || !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
    std::fprintf(stderr, "interleave: command failed: %s\n", contender.command.c_str());
    std::exit(EXIT_FAILURE);
  }
  return {elapsed.count(), usage.ru_maxrss};
}

template <typename Figure>
Figure median(const std::vector<Cost>& costs, Figure Cost::*figure) {
  std::vector<Figure> figures;
  figures.reserve(costs.size());
  for (const Cost& cost : costs) figures.push_back(cost.*figure);
  const auto middle = figures.begin() + static_cast<std::ptrdiff_t>(figures.size() / 2);
  std::nth_element(figures.begin(), middle, figures.end());
  return *middle;
}

/// Returns the command without the folder of its program.
std::string withoutFolder(const std::string& command) {
  const std::size_t slash = command.substr(0, command.find(' ')).rfind('/');
  return slash == std::string::npos ? command : command.substr(slash + 1);
}

}  // namespace

int main(int argc, char** argv) {
  const int rounds = argc > 2 ? std::atoi(argv[1]) : 0;
  if (rounds < 1) {
    std::fprintf(stderr, "usage: interleave ROUNDS COMMAND...\n");
    return 2;
  }
  std::vector<Contender> contenders;
  for (int i = 2; i < argc; ++i) contenders.push_back({argv[i], split(argv[i]), {}});

  std::vector<Contender*> order;
  order.reserve(contenders.size());
  for (Contender& contender : contenders) order.push_back(&contender);
  std::minstd_rand random;
  constexpr int warmUp = 20;
  for (int round = -warmUp; round < rounds; ++round) {
    // In random order, because a large program evicts the cached data of the next program.
    std::shuffle(order.begin(), order.end(), random);
    for (Contender* const contender : order) {
      const Cost cost = run(*contender);
      if (round >= 0) contender->costs.push_back(cost);
    }
  }

  const double first = median(contenders.front().costs, &Cost::milliseconds);
  std::printf("| command | ratio | ms | memory, KiB |\n|---|--:|--:|--:|\n");
  for (const Contender& contender : contenders) {
    const double milliseconds = median(contender.costs, &Cost::milliseconds);
    std::printf("| `%s` | %.2f | %.2f | %ld |\n", withoutFolder(contender.command).c_str(),
                milliseconds / first, milliseconds, median(contender.costs, &Cost::kibibytes));
  }
}
