// measure [--copy FROM TO] COMMAND [ARGUMENT…]
//
// Runs a command and prints its wall-clock seconds, processor seconds, peak
// memory in KiB and exit code. A program of its own, because a child's peak
// memory starts with that of the process it is started from: this one is small.
// --copy copies a file as part of the measured time.
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <exception>

#include "base/file.h"

namespace {

double seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

void copy(const char* from, const char* to) {
  tintline::AtomicFile file(to);
  file.stream() << tintline::readFile(from);
  file.commit();
}

int run(int argc, char** argv) {
  const bool copies = argc > 4 && std::strcmp(argv[1], "--copy") == 0;
  char** const command = argv + (copies ? 4 : 1);
  const auto start = std::chrono::steady_clock::now();
  if (copies) copy(argv[2], argv[3]);
  pid_t child = 0;
  if (const int error = posix_spawnp(&child, command[0], nullptr, nullptr, command, environ)) {
    std::fprintf(stderr, "measure: %s: %s\n", command[0], std::strerror(error));
    return 1;
  }
  int status = 0;
  rusage used{};
  wait4(child, &status, 0, &used);
  const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - start;
  std::printf("%.9f %.6f %ld %d\n", wall.count(), seconds(used.ru_utime) + seconds(used.ru_stime),
              used.ru_maxrss, WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status));
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fputs("usage: measure [--copy FROM TO] COMMAND [ARGUMENT...]\n", stderr);
    return 2;
  }
  try {
    return run(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "measure: %s\n", error.what());
    return 1;
  }
}
