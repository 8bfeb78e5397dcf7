// See office_run.h. Tested by tests/cli/run.py.
#include "cli/office_run.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <ostream>
#include <system_error>
#include <utility>

#include "base/codepage.h"
#include "base/file.h"
#include "cli/job.h"
#include "cli/messages.h"
#include "cli/plan.h"
#include "convert/exact.h"
#include "convert/office_text.h"
#include "runs/office_inputs.h"
#include "sources/module_export.h"
#include "sources/office_file/module_file.h"
#include "sources/office_file/module_text.h"
#include "vb/text.h"

namespace tintline {
namespace {

namespace fs = std::filesystem;

std::string utf8(std::u8string_view text) { return {text.begin(), text.end()}; }

// A text in JSON, in its quotes.
std::string jsonText(std::string_view text) {
  constexpr std::string_view kHex = "0123456789abcdef";
  std::string result = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') result += '\\';
    if (static_cast<unsigned char>(c) >= 0x20)
      result += c;
    else
      (result += "\\u00") += {kHex[static_cast<unsigned char>(c) >> 4], kHex[c & 15]};
  }
  return result + '"';
}

// The array of what `item` makes of each.
template <class Items, class Item>
std::string array(const Items& items, Item item) {
  std::string text = "[";
  for (const auto& each : items) {
    if (text.size() > 1) text += ',';
    text += item(each);
  }
  return text + "]";
}

// Where that goes; empty: the standard output.
fs::path argumentTarget(const Options& options) {
  return options.output == kStandardStream ? fs::path() : argumentPath(options.output);
}

class OfficeRun {
 public:
  OfficeRun(const Options& options, const Surroundings& surroundings, std::ostream& out)
      : options_(options), choice_(inputChoice(options)), surroundings_(surroundings), out_(out) {}

  ExitCode run(const std::vector<Input>& inputs) {
    for (const Input& input : inputs) {
      if (!input.failure.empty())
        fail(input, input.failure);
      else if (input.isOffice)
        tryRead(input);
      else if (!input.inFolder)
        fail(input, problemText({office_file::Fault::UnknownKind, {}, {}}));
    }
    return failed_ ? kSomeFailed : kAllConverted;
  }

 private:
  Message nameOf(const Input& input) const {
    return isStandardInput(input) ? messages::kStandardInput()
                                  : messages::kJust(pathText(input.path));
  }

  void tell(const Input& input, const Message& message, Notice::Severity severity) const {
    const std::wstring file =
        isStandardInput(input) ? argumentText(kStandardStream) : pathText(input.path);
    surroundings_.tell({.severity = severity, .file = file, .message = message});
  }
  void fail(const Input& input, const Message& message) {
    failed_ = true;
    tell(input, message, Notice::Severity::Error);
  }

  void tryRead(const Input& input) {
    try {
      read(input, readOffice(input));
    } catch (const FileError& error) {
      fail(input, reasonText(error.reason()));
    }
  }

  void read(const Input& input, const OfficeDocument& document) {
    if (document.isForeign && input.inFolder) return;
    if (options_.dryRun && hasText(options_))
      tellPlan({.input = input, .target = argumentTarget(options_)});
    else if (options_.list)
      list(input, document);
    else if (options_.format == Format::Source)
      writeSource(document);
    if (!options_.exportModules.empty()) exportModules(input, document);
    for (const office_file::Problem& hint : document.hints)
      tell(input, problemText(hint), Notice::Severity::Warning);
    // To compare texts, a file without code is as good as any.
    const bool isFine = options_.format == Format::Source && document.isForeign;
    for (const Message& failure : document.failures)
      isFine ? tell(input, failure, Notice::Severity::Warning) : fail(input, failure);
  }

  void tellPlan(const Task& task) {
    out_ << text(messages::kWouldBecome(inputName(task), targetName(task.target)));
  }

  // --------------------------------------------------------------------------------- the list

  void list(const Input& input, const OfficeDocument& document) {
    if (options_.format == Format::Json) return listAsData(input, document);
    out_ << text(nameOf(input)) << '\n';
    for (const office_file::Project& project : document.projects) {
      std::string marks;
      if (project.locked) marks += ", " + text(messages::kLocked());
      if (project.isSigned) marks += ", " + text(messages::kSigned());
      if (!marks.empty()) marks = " (" + marks.substr(2) + ")";
      out_ << "  " << utf8(harmless8(project.name)) << marks << '\n';
      for (const office_file::Module& module : project.modules)
        out_ << "    " << utf8(harmless8(module.name)) << "  " << text(kindText(module.kind))
             << ", "
             << text(messages::counted(office_file::editorLines(module.source), messages::kOneLine,
                                       messages::kLines))
             << '\n';
    }
  }

  std::string text(const Message& message) const {
    return toUtf8(message.in(surroundings_.language));
  }
  static std::u8string harmless8(std::u8string_view name) {
    return exactText(harmless(fromUtf8(name)));
  }

  void listAsData(const Input& input, const OfficeDocument& document) {
    const auto flag = [](bool value) { return value ? "true" : "false"; };
    const auto module = [](const office_file::Module& each) {
      return "{\"name\":" + jsonText(utf8(each.name)) + ",\"kind\":\"" +
             std::string(kindName(each.kind)) +
             "\",\"lines\":" + std::to_string(office_file::editorLines(each.source)) + "}";
    };
    const auto project = [&](const office_file::Project& each) {
      return "{\"name\":" + jsonText(utf8(each.name)) +
             ",\"codePage\":" + std::to_string(each.codePage) + ",\"locked\":" + flag(each.locked) +
             ",\"signed\":" + flag(each.isSigned) + ",\"modules\":" + array(each.modules, module) +
             "}";
    };
    std::vector<Message> problems = document.failures;
    for (const office_file::Problem& hint : document.hints) problems.push_back(problemText(hint));
    const std::string file = isStandardInput(input) ? "-" : toUtf8(pathText(input.path));
    out_ << "{\"file\":" << jsonText(file) << ",\"projects\":" << array(document.projects, project)
         << ",\"problems\":"
         << array(problems, [&](const Message& each) { return jsonText(text(each)); }) << "}\n";
  }

  // -------------------------------------------------------------------------------- one text

  static int rankOf(vb::ModuleKind kind) {
    using enum vb::ModuleKind;
    return kind == Standard ? 0 : kind == Class ? 1 : kind == Document ? 2 : 3;
  }

  void writeSource(const OfficeDocument& document) {
    for (const office_file::Project& project : document.projects) {
      std::vector<const office_file::Module*> modules;
      for (const office_file::Module& module : project.modules)
        if (isWanted(module, choice_)) modules.push_back(&module);
      std::ranges::stable_sort(modules, {}, [](const office_file::Module* module) {
        return std::pair(rankOf(module->kind), module->name);
      });
      const std::string place =
          document.projects.size() > 1 ? utf8(harmless8(project.name)) + "/" : std::string();
      for (const office_file::Module* module : modules)
        writeSource(place + utf8(harmless8(module->name)), *module, project.codePage);
    }
  }

  void writeSource(const std::string& name, const office_file::Module& module, vb::CodePage page) {
    out_ << "'==== " << name << office_file::extensionOf(module.kind) << " ====\n";
    std::string code = utf8(vb::decode(office_file::editorText(module.source), page).text);
    std::erase(code, '\r');
    out_ << code;
  }

  // -------------------------------------------------------------------------------- as files

  void exportModules(const Input& input, const OfficeDocument& document) {
    const fs::path root = argumentPath(options_.exportModules);
    FreeNames folders;
    for (const office_file::Project& project : document.projects) {
      fs::path folder = root / input.place;
      if (document.projects.size() > 1) folder = folders.take(folder, fromUtf8(project.name), {});
      FreeNames names;
      for (const office_file::Module& module : project.modules)
        if (options_.module.empty() || isWanted(module, choice_))
          exportModule(input, module, project.codePage,
                       names.take(folder, fromUtf8(module.name),
                                  fromUtf8(office_file::extensionOf(module.kind))));
    }
  }

  void exportModule(const Input& input, const office_file::Module& module, vb::CodePage page,
                    fs::path target) {
    std::string file = office_file::moduleFile(module);
    if (options_.exportUtf8) file = utf8(vb::decode(file, page).text);
    write(input, target, file);
    const std::optional<std::string> resource = office_file::formResource(module);
    if (!resource) return;
    target.replace_extension(".frx");
    if (!holdsAlready(target, *resource)) write(input, target, *resource);
  }

  // The same designer may be written in another way there.
  static bool holdsAlready(const fs::path& target, const std::string& resource) {
    std::error_code none;  // the size of what is no file is the largest there is
    if (fs::file_size(target, none) > office_file::kMaxPart) return false;
    try {
      return office_file::holdSame(readFile(target), resource);
    } catch (const FileError&) {
      return false;
    }
  }

  void write(const Input& input, const fs::path& target, const std::string& bytes) {
    const Task task{.input = input, .target = target};
    if (options_.dryRun) return tellPlan(task);
    try {
      writeTarget(task, options_, surroundings_, [&](std::ostream& out) { out << bytes; });
    } catch (const JobError& error) {
      fail(input, error.reason());
    }
  }

  const Options& options_;
  const InputChoice choice_;
  const Surroundings& surroundings_;
  std::ostream& out_;
  bool failed_ = false;
};

}  // namespace

bool isOfficeRun(const Options& options) {
  return hasText(options) || !options.exportModules.empty();
}

bool hasText(const Options& options) { return options.list || options.format == Format::Source; }

ExitCode runOffice(Inputs inputs, const Options& options, const SettingsFiles& settings,
                   const Surroundings& surroundings) {
  tellPlacesApart(inputs.modules);
  if (options.dryRun)
    return OfficeRun(options, surroundings, surroundings.output).run(inputs.modules);
  std::vector<Task> tasks;
  for (const Input& input : inputs.modules)
    tasks.push_back({.input = input, .target = argumentTarget(options)});
  if (!argumentTarget(options).empty()) checkNothingReadIsOverwritten(tasks, settings);
  ExitCode code = kAllConverted;
  try {
    writeTarget({.input = {}, .target = argumentTarget(options)}, options, surroundings,
                [&](std::ostream& out) {
                  code = OfficeRun(options, surroundings, out).run(inputs.modules);
                });
  } catch (const JobError& error) {
    surroundings.tell({.severity = Notice::Severity::Error, .message = error.reason()});
    code = kSomeFailed;
  }
  return code;
}

}  // namespace tintline
