// See window_memory.h. Tested by tests/unit/app/window_memory_test.cpp.
#include "app/window_memory.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <string>
#include <string_view>
#include <system_error>

#include "base/codepage.h"
#include "base/file.h"
#include "base/ini.h"

namespace tintline {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kWindow = "Fenster", kFiles = "Dateien";
constexpr std::uintmax_t kMaxFile = 1U << 20;
constexpr int kMaxPixels = 100'000;  // no screen is as large

constexpr int kWhole = 1000;  // shares are stored in thousandths

// Between the limits; 0 for anything else.
int number(std::string_view content, std::string_view key, int least, int most) {
  const auto stored = ini::value(content, kWindow, key);
  if (!stored) return 0;
  int result = 0;
  const auto [end, error] =
      std::from_chars(stored->data(), stored->data() + stored->size(), result);
  const bool whole = error == std::errc() && end == stored->data() + stored->size();
  return whole && result >= least && result <= most ? result : 0;
}

// By Brightness.
constexpr std::string_view kBrightness[] = {"System", "Hell", "Dunkel"};

Brightness brightnessIn(std::string_view content) {
  const std::string stored = ini::value(content, kWindow, "Helligkeit").value_or("");
  const auto* const found = std::ranges::find(kBrightness, stored);
  return found == std::end(kBrightness) ? Brightness::System
                                        : static_cast<Brightness>(found - kBrightness);
}

fs::path pathAt(std::string_view content, std::string_view key) {
  return pathFromText(fromUtf8(ini::value(content, kFiles, key).value_or("")));
}

std::string keyOf(std::size_t index) { return "Zuletzt" + std::to_string(index + 1); }

// A line holds a name without line ends only.
bool canBeStored(const fs::path& file) {
  return pathText(file).find_first_of(L"\r\n") == std::wstring::npos;
}

void putFirst(std::vector<fs::path>& files, const fs::path& file) {
  std::erase(files, file);
  files.insert(files.begin(), file);
  if (files.size() > WindowMemory::kMaxRecent) files.resize(WindowMemory::kMaxRecent);
}

}  // namespace

WindowMemory::WindowMemory(const fs::path& userFolder)
    : file_(userFolder.empty() ? fs::path() : userFolder / "Fenster.ini") {}

void WindowMemory::opened(const fs::path& file) {
  if (!canBeStored(file)) return;
  putFirst(recent_, file);
  putFirst(opened_, file);
  std::erase(forgotten_, file);
}

void WindowMemory::forget(const fs::path& file) {
  std::erase(recent_, file);
  std::erase(opened_, file);
  forgotten_.push_back(file);
}

void WindowMemory::load() try {
  const std::string content = file_.empty() ? std::string() : readFile(file_, kMaxFile);
  const auto pixels = [&](std::string_view key) {
    return number(content, key, -kMaxPixels, kMaxPixels);
  };
  const auto share = [&](std::string_view key) {
    return number(content, key, 0, kWhole) / double{kWhole};
  };
  place = {.left = pixels("Links"),
           .top = pixels("Oben"),
           .width = std::max(pixels("Breite"), 0),
           .height = std::max(pixels("Höhe"), 0),
           .maximized = pixels("Maximiert") != 0};
  shares = {.tree = share("Baum"), .preview = share("Vorschau"), .source = share("Quellcode")};
  brightness = brightnessIn(content);
  openFolder = pathAt(content, "Ordner");
  exportFolder = pathAt(content, "Exportordner");
  readRecent(content);
} catch (const FileError&) {
  // there is none yet
}

void WindowMemory::readRecent(std::string_view content) {
  recent_.clear();
  for (std::size_t i = 0; i < kMaxRecent; ++i) {
    const fs::path file = pathAt(content, keyOf(i));
    const bool known = std::ranges::find(recent_, file) != recent_.end() ||
                       std::ranges::find(forgotten_, file) != forgotten_.end();
    if (!file.empty() && !known) recent_.push_back(file);
  }
}

void WindowMemory::save() try {
  if (file_.empty()) return;
  std::error_code failure;
  fs::create_directories(file_.parent_path(), failure);
  if (fs::exists(file_, failure)) readRecent(readFile(file_, kMaxFile));
  for (auto file = opened_.rbegin(); file != opened_.rend(); ++file) putFirst(recent_, *file);
  AtomicFile target(file_);
  target.stream() << text();
  target.commit();
} catch (const FileError&) {
  // it is forgotten
}

std::string WindowMemory::text() const {
  std::string result = "[" + std::string(kWindow) + "]\r\n";
  const auto add = [&](std::string_view key, std::string_view value) {
    result.append(key).append("=").append(value).append("\r\n");
  };
  const auto addShare = [&](std::string_view key, double share) {
    add(key, std::to_string(std::lround(share * kWhole)));
  };
  add("Links", std::to_string(place.left));
  add("Oben", std::to_string(place.top));
  add("Breite", std::to_string(place.width));
  add("Höhe", std::to_string(place.height));
  add("Maximiert", place.maximized ? "1" : "0");
  addShare("Baum", shares.tree);
  addShare("Vorschau", shares.preview);
  addShare("Quellcode", shares.source);
  add("Helligkeit", kBrightness[static_cast<std::size_t>(brightness)]);
  result += "[" + std::string(kFiles) + "]\r\n";
  add("Ordner", toUtf8(pathText(openFolder)));
  add("Exportordner", toUtf8(pathText(exportFolder)));
  for (std::size_t i = 0; i < recent_.size(); ++i) add(keyOf(i), toUtf8(pathText(recent_[i])));
  return result;
}

}  // namespace tintline
