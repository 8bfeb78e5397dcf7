// See office_inputs.h. Tested by tests/cli/run.py.
#include "runs/office_inputs.h"

#include <algorithm>
#include <map>
#include <memory>
#include <utility>

#include "base/codepage.h"
#include "base/file.h"
#include "convert/exact.h"
#include "convert/office_text.h"
#include "runs/messages.h"
#include "sources/module_export.h"
#include "sources/module_header.h"
#include "sources/office_file/module_file.h"
#include "sources/office_file/module_text.h"
#include "vb/fold.h"

namespace tintline {
namespace {

namespace fs = std::filesystem;
using office_file::Fault;

// Faults of files that may be no business of Office's: of any zip package in a folder.
bool isForeign(const office_file::Problem& problem) {
  return problem.place.empty() && problem.module.empty() &&
         (problem.fault == Fault::UnknownKind || problem.fault == Fault::NoProject);
}

std::unique_ptr<office_file::ByteSource> sourceOf(const Input& input) {
  if (input.bytes) return std::make_unique<office_file::MemorySource>(*input.bytes);
  return std::make_unique<office_file::FileSource>(input.path);
}

class Expander {
 public:
  explicit Expander(const InputChoice& choice) : choice_(choice) {}

  Inputs expand(Inputs inputs) {
    tellPlacesApart(inputs.modules);
    result_.passedOver = std::move(inputs.passedOver);
    result_.projectFiles = std::move(inputs.projectFiles);
    for (Input& input : inputs.modules)
      if (input.isOffice)
        add(input);
      else
        result_.modules.push_back(std::move(input));
    if (result_.modules.empty() &&
        result_.projectFiles.empty())  // then what was passed over was all there is
      for (PassedOver& passedOver : std::exchange(result_.passedOver, {})) {
        Input& failed = result_.modules.emplace_back();
        failed.path = std::move(passedOver.path);
        failed.failure = std::move(passedOver.reason);
      }
    return std::move(result_);
  }

 private:
  void add(const Input& input) {
    OfficeDocument document;
    try {
      document = readOffice(input, choice_.watch);
    } catch (const FileError& error) {
      return addFailure(input, reasonText(error.reason()));
    }
    if (document.isForeign && input.inFolder) {
      result_.passedOver.push_back({.path = input.path, .reason = document.failures.front()});
      return;
    }
    const std::size_t before = result_.modules.size();
    for (std::size_t i = 0; i < document.projects.size(); ++i) addProject(input, document, i);
    for (const Message& failure : document.failures) addFailure(input, failure);
    if (result_.modules.size() != before) return;
    if (!choice_.module.empty() || !input.inFolder)
      addFailure(input, choice_.module.empty() ? messages::kNoCode()
                                               : messages::kNoSuchModule(choice_.module));
    else
      result_.passedOver.push_back({.path = input.path, .reason = messages::kNoCode()});
  }

  void addFailure(const Input& input, Message failure) {
    Input failed = input;
    failed.failure = std::move(failure);
    result_.modules.push_back(std::move(failed));
  }

  void addProject(const Input& input, OfficeDocument& document, std::size_t number) {
    office_file::Project& project = document.projects[number];
    fs::path folder = input.place;
    if (document.projects.size() > 1)
      folder = folders_.take(input.place, fromUtf8(project.name), {});
    const auto shared =
        std::make_shared<OfficeProject>(OfficeProject{.place = input.place,
                                                      .name = fromUtf8(project.name),
                                                      .locked = project.locked,
                                                      .isSigned = project.isSigned});
    FreeNames names;
    for (office_file::Module& module : project.modules) {
      if (!isWanted(module, choice_)) continue;
      Input member = input;
      member.isOffice = false;
      member.place = names.take(folder, fromUtf8(module.name),
                                fromUtf8(office_file::extensionOf(module.kind)));
      member.folder = input.folder + fs::path(input.place / std::to_string(number)).native();
      member.file.size = module.source.size();
      member.module = std::make_shared<OfficeModule>(
          OfficeModule{.name = fromUtf8(module.name),
                       .kind = module.kind,
                       .lines = office_file::editorLines(module.source),
                       .text = choice_.inEditor ? office_file::editorText(module.source)
                                                : office_file::moduleFile(module),
                       .codePage = project.codePage,
                       .hint = hintOf(document, module),
                       .project = shared});
      std::string().swap(module.source);
      result_.modules.push_back(std::move(member));
    }
  }

  static Message hintOf(const OfficeDocument& document, const office_file::Module& module) {
    for (const office_file::Problem& hint : document.hints)
      if (hint.module == module.name) return problemText({hint.fault, {}, hint.module});
    return {};
  }

  const InputChoice& choice_;
  Inputs result_;
  FreeNames folders_;
};

}  // namespace

Message warningOf(const Input& input, const Message& lost) {
  return input.module && !input.module->hint.empty() ? input.module->hint : lost;
}

OfficeDocument readOffice(const Input& input, const std::function<void()>& watch) {
  const auto source = sourceOf(input);
  office_file::OfficeFile file = office_file::readOfficeFile(*source, [&watch] {
    if (watch) watch();
    return true;
  });
  OfficeDocument document{.projects = std::move(file.projects), .failures = {}, .hints = {}};
  for (office_file::Problem& problem : file.problems) {
    document.isForeign = document.projects.empty() && isForeign(problem);
    if (problem.fault == Fault::CompiledOnly)
      document.hints.push_back(std::move(problem));
    else
      document.failures.push_back(problemText(problem));
  }
  return document;
}

bool isWanted(const office_file::Module& module, const InputChoice& choice) {
  if (!choice.module.empty()) return vb::equalFolded(module.name, exactText(choice.module));
  return choice.all || module.kind != vb::ModuleKind::Document ||
         office_file::hasCode(module.source);
}

fs::path FreeNames::take(const fs::path& folder, std::wstring_view stem, std::wstring_view ending) {
  const auto path = [&](std::size_t number) {
    std::wstring name(stem);
    if (number > 0) name += L'-' + std::to_wstring(number + 1);
    return fkt_PfadVerbinden(folder, name.append(ending));
  };
  std::size_t& asked = taken_[fileNameKey(path(0))];
  while (asked > 0 && !taken_.try_emplace(fileNameKey(path(asked)), 1).second) ++asked;
  return path(asked++);
}

void tellPlacesApart(std::vector<Input>& inputs) {
  std::map<fs::path::string_type, std::vector<Input*>> byPlace;
  for (Input& input : inputs)
    if (input.isOffice) byPlace[fileNameKey(input.place)].push_back(&input);
  FreeNames names;
  for (auto& [key, same] : byPlace) {
    if (same.size() == 1) continue;
    for (Input* input : same) {
      std::error_code none;
      const fs::path parent = fs::weakly_canonical(input->path, none).parent_path().filename();
      const fs::path folder = fkt_PfadVerbinden({}, pathText(parent));
      input->place = names.take(folder, pathText(input->place.filename()), {});
    }
  }
}

Input joinedModules(const std::vector<Input>& modules) {
  Input joined = modules.front();
  OfficeModule all = *joined.module;
  const bool isAnsi = std::ranges::all_of(
      modules, [](const Input& input) { return input.module->codePage == ansiCodePage(); });
  if (!isAnsi) all.codePage = vb::kUtf8;  // which has the characters of all pages
  all.text.clear();
  for (const Input& input : modules) {
    const OfficeModule& module = *input.module;
    for (const std::string& line : Modulkopf(isAnsi ? toAnsi(module.name) : toUtf8(module.name)))
      all.text += line + "\r\n";
    if (isAnsi)
      all.text += module.text;
    else
      for (const char8_t c : vb::decode(module.text, module.codePage).text)
        all.text += static_cast<char>(c);
    if (all.hint.empty()) all.hint = module.hint;
  }
  joined.module = std::make_shared<OfficeModule>(std::move(all));
  return joined;
}

Inputs withOfficeModules(Inputs inputs, const InputChoice& choice) {
  return Expander(choice).expand(std::move(inputs));
}

}  // namespace tintline
