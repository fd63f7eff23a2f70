#include "processes.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace tessel::bench {
namespace {

[[noreturn]] void Fail(const std::vector<std::string>& command) {
  std::fprintf(stderr, "failed:");
  for (const std::string& argument : command)
    std::fprintf(stderr, " %s", argument.c_str());
  std::fprintf(stderr, "\n");
  std::exit(2);
}

std::string ReadAll(int file) {
  std::string text;
  char buffer[4096];
  for (ssize_t count = 0; (count = ::read(file, buffer, sizeof buffer)) > 0;)
    text.append(buffer, static_cast<std::size_t>(count));
  return text;
}

}  // namespace

Measured Run(const std::vector<std::string>& command) {
  std::vector<std::string> texts = command;
  std::vector<char*> arguments;
  for (std::string& text : texts)
    arguments.push_back(text.data());
  arguments.push_back(nullptr);
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) Fail(command);
  posix_spawn_file_actions_t files;
  ::posix_spawn_file_actions_init(&files);
  ::posix_spawn_file_actions_adddup2(&files, ends[1], STDOUT_FILENO);

  const auto start = std::chrono::steady_clock::now();
  pid_t process = 0;
  if (::posix_spawnp(&process, arguments[0], &files, nullptr, arguments.data(), environ) != 0) Fail(command);
  ::posix_spawn_file_actions_destroy(&files);
  ::close(ends[1]);
  Measured measured;
  measured.output = ReadAll(ends[0]);
  ::close(ends[0]);
  int status = 0;
  rusage used{};
  if (::wait4(process, &status, 0, &used) != process || status != 0) Fail(command);
  measured.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  measured.peakKilobytes = used.ru_maxrss;
  return measured;
}

long CountSystemCalls(std::vector<std::string> command, const std::string& scratch) {
  if (std::system("command -v strace >/dev/null") != 0) return -1;
  const std::string report = scratch + "/strace.txt";
  command.insert(command.begin(), {"strace", "-f", "-qq", "-c", "-U", "calls,name", "-o", report});
  (void)Run(command);
  std::ifstream lines(report);
  long calls = 0;
  for (std::string line; std::getline(lines, line);) {
    long number = 0;
    char name[64];
    if (std::sscanf(line.c_str(), "%ld %63s", &number, name) == 2 && std::string(name) == "total")
      calls = number;
  }
  return calls;
}

}  // namespace tessel::bench
