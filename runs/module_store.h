// The modules of a run between its passes: kept while they need little memory, else read once more.
//
// Tested by tests/cli/run.py and tests/cli/project.py.
#pragma once

#include <cstddef>
#include <functional>
#include <mutex>
#include <optional>
#include <vector>

#include "runs/inputs.h"
#include "vb/module.h"

namespace tintline {

class ModuleStore {
 public:
  // For so many modules, of which it keeps up to `room` bytes. `readAgain` reads one once more, by
  // its index; it may throw JobError.
  ModuleStore(std::size_t count, std::size_t room,
              std::function<vb::Module(std::size_t)> readAgain);

  // May be called by several threads, each for modules of its own.

  // Puts a module in, that of the input.
  void put(std::size_t index, vb::Module module, const Input& input);
  // Gives it away. Throws JobError, also when its file has changed.
  vb::Module take(std::size_t index);

 private:
  struct Slot {
    std::optional<vb::Module> module;
    std::size_t hash = 0;
  };

  std::function<vb::Module(std::size_t)> readAgain_;
  std::vector<Slot> slots_;
  std::mutex mutex_;  // guards what follows
  std::size_t room_;
};

}  // namespace tintline
