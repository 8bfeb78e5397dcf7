// The options of the command line.
//
// Arguments are UTF-8 text on Windows and bytes as they come elsewhere.
//
// Tested by tests/unit/cli/cli_test.cpp and tests/cli/run.py.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/message.h"
#include "cli/notice.h"
#include "convert/format.h"
#include "engine/color_scheme.h"
#include "engine/document_frame.h"
#include "listing/options.h"
#include "vb/text.h"

namespace tintline {

// Line numbers from 1, both ends included; first <= last.
struct LineRange {
  std::size_t first;
  std::size_t last;
};

// The file name that stands for the standard input or output.
inline constexpr std::string_view kStandardStream = "-";

struct OptionRow;

struct Options {
  std::vector<std::string> inputs;
  std::vector<const OptionRow*> given;  // which the arguments hold
  std::string output;                   // "" when not given
  std::string outputDir;                // "" when not given
  Mode mode = Mode::Exact;
  Format format = Format::Page;
  StyleMode style = StyleMode::Class;
  bool lineNumbers = false;
  std::vector<LineRange> lines;  // empty: all
  int indent = 0;
  int wrap = 0;  // line width, 0: lines are not broken
  bool pasted = false;
  std::optional<vb::CodePage> encoding;  // or kAutomatic
  bool project = false;                  // the inputs are projects
  bool checkLinks = false;               // the inputs are folders with pages
  std::optional<listing::Links> links;
  std::optional<bool> titles;
  std::optional<listing::Header> header;
  std::optional<listing::Theme> theme;
  std::optional<Language> language;  // of the words on pages
  std::array<std::optional<listing::Color>, kColorCategories> colors;
  std::string css;       // "" when not given
  std::string keywords;  // "" when not given
  std::string settings;  // "" when not given
  bool all = false;      // empty document modules too
  bool list = false;
  std::string module;         // "": all
  std::string exportModules;  // "" when not given
  bool exportUtf8 = false;
  unsigned jobs = 0;  // 0: as many as there are processors
  bool skipUnchanged = false;
  bool check = false;
  bool dryRun = false;
  NoticeFormat errors = NoticeFormat::Text;
  bool quiet = false;
  bool verbose = false;
  bool printSettings = false;
  bool help = false;     // the rest counts for nothing then
  bool version = false;  // likewise
};

// The program was called in a wrong way; the message is for the user.
class UsageError {
 public:
  explicit UsageError(Message message) : message_(std::move(message)) {}
  const Message& message() const { return message_; }

 private:
  Message message_;
};

// Reads the arguments behind the program's name. Throws UsageError.
Options parseOptions(const std::vector<std::string>& arguments);

// The value of --format that stands for it.
std::string_view formatName(Format format);

// What --errors says, also when other arguments are wrong.
NoticeFormat noticeFormat(const std::vector<std::string>& arguments);

// The path that an argument names, and how an argument is shown to the user.
std::filesystem::path argumentPath(std::string_view argument);
std::wstring argumentText(std::string_view argument);

}  // namespace tintline
