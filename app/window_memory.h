// What the main window remembers for its user from one start to the next: where it stood and how it
// was divided, its brightness, the folders and files that were used last. It is not a setting: it
// has a file of its own in the user's folder, in UTF-8, and whatever in it is damaged is as if it
// were not there.
//
// Tested by tests/unit/app/window_memory_test.cpp.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <vector>

namespace tintline {

// The windows' colours, as the user wants them: as the system's setting says, or always so.
enum class Brightness { System, Light, Dark };

class WindowMemory {
 public:
  static constexpr std::size_t kMaxRecent = 8;

  // An empty folder stands for none: then nothing is remembered.
  explicit WindowMemory(const std::filesystem::path& userFolder);

  // As pixels of the screen, while the window is neither minimised nor maximised; without a width
  // it was never shown.
  struct Place {
    int left = 0, top = 0, width = 0, height = 0;
    bool maximized = false;
  };
  Place place;

  // The shares of what the splitters divide, each between 0 and 1; 0: as the window begins.
  struct Shares {
    double tree = 0, preview = 0, source = 0;
  };
  Shares shares;

  Brightness brightness = Brightness::System;

  std::filesystem::path openFolder, exportFolder;  // empty: as the dialog begins

  // The files that were opened last, the last one first.
  const std::vector<std::filesystem::path>& recent() const { return recent_; }
  void opened(const std::filesystem::path& file);
  void forget(const std::filesystem::path& file);

  // Reads it; writes it, together with the files that other windows of the program opened
  // meanwhile. What cannot be written is forgotten.
  void load();
  void save();

 private:
  void readRecent(std::string_view content);
  std::string text() const;

  std::filesystem::path file_;
  std::vector<std::filesystem::path> recent_, opened_, forgotten_;  // the last two: by this window
};

}  // namespace tintline
