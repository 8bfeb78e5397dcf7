// See module_store.h. Tested by tests/cli/run.py and tests/cli/project.py.
#include "runs/module_store.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "runs/messages.h"
#include "runs/task.h"

namespace tintline {
namespace {

// What room is left for more tokens was never written to, and so takes no memory.
std::size_t memoryOf(const vb::Module& module) {
  return module.text.capacity() + module.tokens.size() * sizeof(vb::Token) +
         module.declarations.capacity() * sizeof(vb::Declaration) + module.names.memory();
}

std::size_t hashOf(const vb::Module& module) {
  return std::hash<std::u8string_view>()(module.text);
}

// A second time: a pipe cannot.
bool isReadable(const Input& input) {
  return input.module || input.bytes || input.file.kind == FoundFile::Kind::File;
}

}  // namespace

ModuleStore::ModuleStore(std::size_t count, std::size_t room,
                         std::function<vb::Module(std::size_t)> readAgain)
    : readAgain_(std::move(readAgain)), slots_(count), room_(room) {}

void ModuleStore::put(std::size_t index, vb::Module module, const Input& input) {
  const std::size_t memory = memoryOf(module);
  {
    const std::lock_guard lock(mutex_);
    if (memory <= room_ || !isReadable(input)) {
      room_ -= std::min(memory, room_);
      slots_[index].module = std::move(module);
      return;
    }
  }
  slots_[index].hash = hashOf(module);
}

vb::Module ModuleStore::take(std::size_t index) {
  Slot& slot = slots_[index];
  if (!slot.module) {
    vb::Module module = readAgain_(index);
    if (hashOf(module) != slot.hash) throw JobError(messages::kChangedMeanwhile());
    return module;
  }
  vb::Module module = std::move(*slot.module);
  slot.module.reset();
  const std::lock_guard lock(mutex_);
  room_ += memoryOf(module);
  return module;
}

}  // namespace tintline
