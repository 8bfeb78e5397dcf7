// See module_store.h. Tested by tests/cli/project.py.
#include "cli/project/module_store.h"

#include <cstdint>
#include <string_view>
#include <utility>

#include "cli/job.h"
#include "cli/messages.h"

namespace tintline {
namespace {

// The memory of all modules that are kept, as a share of the size of all sources, with some room
// beside it.
constexpr double kKeptPerSource = 1.5;
constexpr std::size_t kKeptBeside = 16U << 20;

std::size_t memoryOf(const vb::Module& module) {
  return module.text.capacity() + module.tokens.capacity() * sizeof(vb::Token) +
         module.declarations.capacity() * sizeof(vb::Declaration);
}

std::size_t hashOf(const vb::Module& module) {
  return std::hash<std::u8string_view>()(module.text);
}

}  // namespace

ModuleStore::ModuleStore(const std::vector<Task>& tasks,
                         std::function<vb::Module(std::size_t)> read)
    : read_(std::move(read)), slots_(tasks.size()), room_(kKeptBeside) {
  std::uintmax_t sources = 0;
  for (const Task& task : tasks) sources += task.input.file.size;
  room_ += static_cast<std::size_t>(kKeptPerSource * static_cast<double>(sources));
}

void ModuleStore::put(std::size_t task, vb::Module module) {
  const std::size_t memory = memoryOf(module);
  {
    const std::lock_guard lock(mutex_);
    if (memory <= room_) {
      room_ -= memory;
      slots_[task].module = std::move(module);
      return;
    }
  }
  slots_[task].hash = hashOf(module);
}

vb::Module ModuleStore::take(std::size_t task) {
  if (!slots_[task].module) {
    vb::Module module = read_(task);
    if (hashOf(module) != slots_[task].hash) throw JobError(messages::kChangedMeanwhile());
    return module;
  }
  vb::Module module = std::move(*slots_[task].module);
  slots_[task].module.reset();
  const std::lock_guard lock(mutex_);
  room_ += memoryOf(module);
  return module;
}

}  // namespace tintline
