// See project_inputs.h. Tested by tests/cli/project.py.
#include "runs/project_inputs.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <system_error>
#include <utility>

#include "base/codepage.h"
#include "base/file.h"
#include "convert/exact.h"
#include "convert/source_text.h"
#include "runs/messages.h"
#include "runs/office_inputs.h"
#include "site/page_names.h"
#include "site/project_file.h"
#include "site/words.h"
#include "vb/fold.h"

namespace tintline {
namespace {

namespace fs = std::filesystem;

std::u8string textOf(const fs::path& path) { return exactText(pathText(path)); }

// Finds what a project file names as the file system spells it, which may count case.
class Speller {
 public:
  // The path from a folder.
  fs::path spelled(const fs::path& folder, const fs::path& relative) {
    fs::path found;
    for (const fs::path& part : relative) found /= entryNamed(folder / found, part);
    return found;
  }

 private:
  fs::path entryNamed(const fs::path& folder, const fs::path& name) {
    std::error_code none;
    if (name == "." || name == ".." || fs::exists(folder / name, none)) return name;
    const Names& names = namesIn(folder.empty() ? fs::path(".") : folder);
    const auto found = names.find(vb::folded(textOf(name)));
    return found == names.end() ? name : found->second;
  }

  using Names = std::map<std::u8string, fs::path>;  // by what does not tell case
  const Names& namesIn(const fs::path& folder) {
    const auto [known, isNew] = folders_.try_emplace(folder);
    std::error_code failure;
    if (isNew)
      for (fs::directory_iterator entry(folder, failure);
           !failure && entry != fs::directory_iterator(); entry.increment(failure)) {
        const fs::path name = entry->path().filename();
        known->second.try_emplace(vb::folded(textOf(name)), name);
      }
    return known->second;
  }

  std::map<fs::path, Names> folders_;
};

// The name of the folder that the first path leads to, or which holds its file.
std::u8string rootName(const InputChoice& choice) {
  std::error_code none;
  fs::path path = fs::absolute(choice.paths.front(), none).lexically_normal();
  if (findFile(path).kind == FoundFile::Kind::File) path = path.parent_path();
  if (!path.has_filename()) path = path.parent_path();
  return textOf(path.filename());
}

class Finder {
 public:
  explicit Finder(const InputChoice& choice)
      : inputs_(withOfficeModules(collectInputs(choice), choice)), root_(rootName(choice)) {}

  ProjectInputs run() {
    for (Input& module : inputs_.modules) addTask(std::move(module));
    for (const Input& file : inputs_.projectFiles) addProject(file);
    addRest();
    setTargets();
    found_.passedOver = std::move(inputs_.passedOver);
    found_.title = found_.projects.size() == 1 ? found_.projects.front().name : root_;
    return std::move(found_);
  }

 private:
  std::size_t addTask(Input input) {
    const std::size_t task = found_.tasks.size();
    if (input.file.kind == FoundFile::Kind::File) known_.try_emplace(input.file.identity, task);
    found_.tasks.push_back({.input = std::move(input), .target = {}});
    return task;
  }

  void addProject(const Input& file) {
    std::string bytes;
    try {
      bytes = readFile(file.path, kLargestInput);
    } catch (const FileError& error) {
      Input failed = file;
      failed.failure = unread(error).reason();
      addTask(std::move(failed));
      return;
    }
    const site::ProjectFile read = site::readProjectFile(decodeSource(bytes).text);
    SourceProject project{.name = read.name.empty() ? textOf(file.place.stem()) : read.name,
                          .declaredName = read.name,
                          .isLibrary = read.isLibrary,
                          .tasks = {}};
    std::set<std::size_t> listed;
    for (const site::ProjectFile::Entry& entry : read.modules) {
      const auto task = taskOf(file, entry);
      if (listed.insert(task).second) project.tasks.push_back(use(task));
    }
    found_.projects.push_back(std::move(project));
  }

  // The task of a module that a project file lists.
  std::size_t taskOf(const Input& file, const site::ProjectFile::Entry& entry) {
    const fs::path relative(entry.path);
    Input input{.path = file.path.parent_path() / relative,
                .place = (file.place.parent_path() / relative).lexically_normal(),
                .file = {},
                .folder = {}};
    if (!entry.allowed) {
      input.failure = messages::kLeadsElsewhere();
      return addTask(std::move(input));
    }
    const fs::path found = speller_.spelled(file.path.parent_path(), relative);
    input.path = file.path.parent_path() / found;
    input.place = (file.place.parent_path() / found).lexically_normal();
    input.file = findFile(input.path);
    const auto known = known_.find(input.file.identity);
    return known != known_.end() ? known->second : addTask(std::move(input));
  }

  // A task for one more project: each shows its own page of a module.
  std::size_t use(std::size_t task) {
    if (used_.insert(task).second) return task;
    found_.tasks.push_back(found_.tasks[task]);
    used_.insert(found_.tasks.size() - 1);
    return found_.tasks.size() - 1;
  }

  // Into the project of its Office file; false: it is no such module.
  bool addOfficeModule(std::size_t task) {
    const Input& input = found_.tasks[task].input;
    if (!input.module) return false;
    const auto [known, isNew] =
        officeProjects_.try_emplace(input.module->project.get(), found_.projects.size());
    if (isNew)
      found_.projects.push_back({.name = textOf(input.place.parent_path().generic_u8string()),
                                 .declaredName = exactText(input.module->project->name),
                                 .isLibrary = false,
                                 .tasks = {}});
    found_.projects[known->second].tasks.push_back(task);
    return true;
  }

  // The modules that no project file lists.
  void addRest() {
    std::vector<std::size_t> rest;
    for (std::size_t i = 0; i < found_.tasks.size(); ++i)
      if (!used_.contains(i) && found_.tasks[i].input.failure.empty()) rest.push_back(i);
    std::erase_if(rest, [&](std::size_t task) { return addOfficeModule(task); });
    if (rest.empty()) return;
    if (found_.projects.empty() && haveOwnNames(rest)) {
      found_.projects.push_back(
          {.name = root_, .declaredName = {}, .isLibrary = false, .tasks = std::move(rest)});
      return;
    }
    std::map<fs::path, SourceProject> folders;
    for (const std::size_t task : rest) {
      const fs::path folder = found_.tasks[task].input.place.parent_path();
      SourceProject& project = folders[folder];
      project.name = folder.empty() ? root_ : textOf(folder.generic_u8string());
      project.tasks.push_back(task);
    }
    for (auto& [folder, project] : folders) found_.projects.push_back(std::move(project));
  }

  bool haveOwnNames(const std::vector<std::size_t>& tasks) const {
    std::set<std::u8string> names;
    return std::ranges::all_of(tasks, [&](std::size_t task) {
      return names.insert(vb::folded(textOf(found_.tasks[task].input.place.stem()))).second;
    });
  }

  void setTargets() {
    std::vector<std::u8string> modules;
    for (const SourceProject& project : found_.projects)
      for (const std::size_t task : project.tasks)
        modules.push_back(textOf(found_.tasks[task].input.place.generic_u8string()));
    const std::vector<std::u8string> pages = site::pageNames(modules);
    std::size_t next = 0;
    for (const SourceProject& project : found_.projects)
      for (const std::size_t task : project.tasks)
        found_.tasks[task].target = fs::path(pages[next++]).make_preferred();
  }

  Inputs inputs_;
  const std::u8string root_;
  ProjectInputs found_;
  std::map<fs::path::string_type, std::size_t> known_;  // tasks, by the identity of their files
  std::map<const OfficeProject*, std::size_t> officeProjects_;
  Speller speller_;
  std::set<std::size_t> used_;  // tasks that belong to a project
};

}  // namespace

ProjectInputs findProjects(InputChoice choice) {
  choice.projectFiles = true;
  return Finder(choice).run();
}

}  // namespace tintline
