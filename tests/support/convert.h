// Short ways to convert lines in tests.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "engine/conversion.h"
#include "tests/support/literal_engine.h"

namespace tintline::test {

inline LineList lineList(const std::vector<std::string>& lines) {
  LineList list;
  for (const std::string& line : lines) list.append(line);
  return list;
}

inline ColorScheme defaultColors() {
  ColorScheme scheme;
  modColor::Farbesetzen(scheme);
  return scheme;
}

inline literal::Colours literalColours(const ColorScheme& scheme) {
  literal::Colours colours;
  for (std::size_t category = 0; category < kColorCategories; ++category)
    for (std::size_t field = 0; field < kColorFields; ++field)
      colours.fields[category][field] = scheme[category][field];
  return colours;
}

// Of a LineList or HtmlLines.
std::vector<std::string> strings(const auto& lines) {
  std::vector<std::string> result;
  for (std::size_t i = 0; i < lines.size(); ++i) result.emplace_back(lines[i]);
  return result;
}

inline std::vector<bool> wrapped(const HtmlLines& lines) {
  std::vector<bool> result;
  for (std::size_t i = 0; i < lines.size(); ++i) result.push_back(lines.route(i) == Route::Wrapper);
  return result;
}

// Writes down what it is told, in the words of the literal transcription, where the first line that
// was worked on is line `first`; asks for an abort at line `abortAt` when that is not negative.
class RecordingObserver final : public ConversionObserver {
 public:
  explicit RecordingObserver(int abortAt = -1, std::size_t first = 1)
      : abortAt_(abortAt), first_(first) {}
  void reading(std::size_t i, std::size_t n) override { note("lese", i, n); }
  void yield() override { events.push_back("yield"); }
  bool abortRequested() override {
    events.push_back("abort?");
    return abortAt_-- == 0;
  }
  void emitted(std::string_view, Route route) override {
    events.push_back(route == Route::Wrapper ? "add wrapper" : "add direct");
  }
  void processed(std::size_t i, std::size_t n) override { note("bearbeite", i + first_, n); }

  std::vector<std::string> events;

 private:
  void note(const char* what, std::size_t i, std::size_t n) {
    events.push_back(std::string(what) + ' ' + std::to_string(i) + ' ' + std::to_string(n));
  }
  int abortAt_;
  std::size_t first_;
};

}  // namespace tintline::test
