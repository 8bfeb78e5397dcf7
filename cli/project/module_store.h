// The modules of a run between its passes: kept while they need little memory, else read once more.
//
// Tested by tests/cli/project.py.
#pragma once

#include <cstddef>
#include <functional>
#include <mutex>
#include <optional>
#include <vector>

#include "cli/plan.h"
#include "vb/module.h"

namespace tintline {

class ModuleStore {
 public:
  // `read` reads the module of a task, by its index; it may throw JobError.
  ModuleStore(const std::vector<Task>& tasks, std::function<vb::Module(std::size_t)> read);

  // May be called by several threads, each for a task of its own.

  // Puts a module in.
  void put(std::size_t task, vb::Module module);
  // Gives it away. Throws JobError, also when its file has changed.
  vb::Module take(std::size_t task);

 private:
  struct Slot {
    std::optional<vb::Module> module;
    std::size_t hash = 0;
  };

  std::function<vb::Module(std::size_t)> read_;
  std::vector<Slot> slots_;
  std::mutex mutex_;  // guards what follows
  std::size_t room_;  // bytes
};

}  // namespace tintline
