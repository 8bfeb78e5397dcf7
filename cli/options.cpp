// The parser. See options.h.
// Tested by tests/unit/cli/cli_test.cpp and tests/cli/run.py.
#include "cli/options.h"

#include "base/codepage.h"
#include "cli/messages.h"
#include "cli/nearest.h"
#include "cli/option_table.h"

namespace tintline {
namespace {

std::wstring nameOf(const OptionRow& option) { return L"--" + argumentText(option.name); }

// What can be given: "class or inline", "a number from 1 to 64".
Message allowedValues(const OptionRow& option) {
  if (Message allowed = option.allowed(); !allowed.empty()) return allowed;
  std::vector<std::wstring> names;
  for (const std::string_view choice : option.choices) names.push_back(argumentText(choice));
  return messages::oneOf(names);
}

Message withSuggestion(const Message& wrong, std::string_view meant) {
  return meant.empty() ? wrong : messages::kMistyped(wrong, argumentText(meant));
}

UsageError unknownOption(std::string_view name) {
  std::vector<std::string> options;
  for (const OptionRow& option : optionTable()) options.push_back("--" + std::string(option.name));
  const std::vector<std::string_view> names(options.begin(), options.end());
  return UsageError(
      withSuggestion(messages::kUnknownOption(argumentText(name)), nearest(name, names)));
}

void store(const OptionRow& option, std::string_view value, Options& options) {
  if (option.takesValue() && value.empty())
    throw UsageError(messages::kValueMissing(nameOf(option), option.value()));
  options.given.push_back(&option);
  if (option.store(options, value)) return;
  const Message wrong =
      messages::kWrongValue(nameOf(option), argumentText(value), allowedValues(option));
  throw UsageError(
      withSuggestion(wrong, nearest(value.substr(0, value.find('=')), option.choices)));
}

class Parser {
 public:
  explicit Parser(const std::vector<std::string>& arguments) : arguments_(arguments) {}

  Options parse() {
    bool optionsEnded = false;
    while (next_ < arguments_.size() && !options_.help && !options_.version) {
      const std::string_view argument = arguments_[next_++];
      if (optionsEnded || argument == kStandardStream || !argument.starts_with('-'))
        addInput(argument);
      else if (argument == "--")
        optionsEnded = true;
      else if (argument.starts_with("--"))
        takeLong(argument.substr(2));
      else
        takeShort(argument.substr(1));
    }
    return std::move(options_);
  }

 private:
  void addInput(std::string_view argument) {
    if (argument.empty()) throw UsageError(messages::kEmptyName());
    options_.inputs.emplace_back(argument);
  }

  // NAME, NAME=VALUE, or NAME with the value in the next argument.
  void takeLong(std::string_view argument) {
    const std::size_t equals = argument.find('=');
    const std::string_view name = argument.substr(0, equals);
    for (const OptionRow& option : optionTable()) {
      if (option.name != name) continue;
      if (equals == std::string_view::npos) return store(option, nextValue(option), options_);
      if (!option.takesValue()) throw UsageError(messages::kTakesNoValue(nameOf(option)));
      return store(option, argument.substr(equals + 1), options_);
    }
    throw unknownOption("--" + std::string(name));
  }

  // One or more letters; behind one that takes a value stands that value, or it
  // is the next argument.
  void takeShort(std::string_view letters) {
    while (!letters.empty()) {
      const OptionRow& option = shortOption(letters);
      letters.remove_prefix(1);
      if (!option.takesValue()) {
        store(option, {}, options_);
      } else {
        store(option, letters.empty() ? nextValue(option) : letters, options_);
        return;
      }
    }
  }

  static const OptionRow& shortOption(std::string_view letters) {
    for (const OptionRow& option : optionTable())
      if (option.shortName == letters.front()) return option;
    throw unknownOption("-" + std::string(letters));
  }

  std::string_view nextValue(const OptionRow& option) {
    if (!option.takesValue() || next_ == arguments_.size()) return {};
    return arguments_[next_++];
  }

  const std::vector<std::string>& arguments_;
  std::size_t next_ = 0;
  Options options_;
};

}  // namespace

Options parseOptions(const std::vector<std::string>& arguments) {
  return Parser(arguments).parse();
}

NoticeFormat noticeFormat(const std::vector<std::string>& arguments) {
  NoticeFormat format = NoticeFormat::Text;
  for (std::size_t i = 0; i < arguments.size() && arguments[i] != "--"; ++i) {
    const bool apart = arguments[i] == "--errors" && i + 1 < arguments.size();
    const std::string argument = apart ? "--errors=" + arguments[i + 1] : arguments[i];
    if (argument == "--errors=json") format = NoticeFormat::Json;
    if (argument == "--errors=text") format = NoticeFormat::Text;
  }
  return format;
}

// Of UTF-8 text a path takes the bytes unchanged where its own characters are
// bytes, whatever they are, and converts them on Windows.
std::filesystem::path argumentPath(std::string_view argument) {
  return std::u8string(argument.begin(), argument.end());
}

std::wstring argumentText(std::string_view argument) { return fromUtf8(argument); }

}  // namespace tintline
