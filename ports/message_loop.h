// The user interface's event processing, for work that takes a while.
#pragma once

namespace tintline {

class MessageLoop {
 public:
  virtual ~MessageLoop() = default;

  // Processes the events that wait and returns at once. Commands may arrive in it:
  // every call is a point of re-entry.
  virtual void yield() = 0;
};

}  // namespace tintline
