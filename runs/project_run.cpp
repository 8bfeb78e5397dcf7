// See project_run.h. Tested by tests/cli/project.py.
#include "runs/project_run.h"

#include <algorithm>
#include <atomic>
#include <functional>
#include <optional>
#include <set>
#include <system_error>
#include <utility>

#include "base/codepage.h"
#include "base/parallel.h"
#include "convert/exact.h"
#include "runs/module_store.h"
#include "site/data.h"
#include "site/pages.h"
#include "site/words.h"

namespace tintline {
namespace {

namespace fs = std::filesystem;

using Form = ProjectOrder::Form;

// The JSON document where a folder takes it.
constexpr std::u8string_view kDataFile = u8"projekt.json";

// Modules are kept between the passes while they need no more memory than this times the size of
// all sources and some room beside it. Nearly all projects stay below; others are read again.
constexpr double kKeptPerSource = 3;
constexpr std::size_t kKeptBeside = 16U << 20;

std::size_t roomFor(const std::vector<Task>& tasks) {
  double sources = 0;
  for (const Task& task : tasks) sources += static_cast<double>(task.input.file.size);
  return kKeptBeside + static_cast<std::size_t>(kKeptPerSource * sources);
}

class ProjectRun {
 public:
  ProjectRun(const ProjectInputs& inputs, const ProjectOrder& order, ProjectObserver& observer)
      : inputs_(inputs),
        order_(order),
        observer_(observer),
        listing_(order.listing),
        store_(inputs.tasks.size(), roomFor(inputs.tasks),
               [this](std::size_t task) { return read(task); }),
        indices_(inputs.tasks.size()),
        failures_(inputs.tasks.size()),
        warnings_(inputs.tasks.size()),
        lines_(inputs.tasks.size()) {
    listing_.lineNumbers = true;  // links lead to lines
    site_.title = inputs.title;
  }

  bool run() {
    for (std::size_t task = 0; task < inputs_.tasks.size(); ++task)
      if (!inputs_.tasks[task].input.failure.empty())
        fail(task, {.failure = inputs_.tasks[task].input.failure});
    for (const SourceProject& source : inputs_.projects) readProject(source);
    for (std::size_t i = 0; i < inputs_.projects.size(); ++i) bind(i);
    addFailures();
    switch (order_.form) {
      case Form::Site:
        writeSite();
        break;
      case Form::Tables:
        finishAll();
        writeTables();
        break;
      case Form::Data:
        finishAll();
        writeData();
        break;
    }
    return complete_;
  }

 private:
  // Whether there is more to do.
  bool goesOn() {
    if (ended_) return false;
    if (!observer_.goesOn()) ended_ = true;
    if (ended_) complete_ = false;
    return !ended_;
  }

  vb::Module read(std::size_t task) {
    ReadModule source = readModule(inputs_.tasks[task].input, order_.reading);
    warnings_[task] = std::move(source.warning);
    return std::move(source.module);
  }

  // Of a task with which nothing more is done.
  void fail(std::size_t task, Outcome outcome) {
    complete_ = false;
    failures_[task] = outcome.failure;
    indices_[task].reset();
    observer_.finished(task, std::move(outcome));
  }

  void done(std::size_t task) {
    observer_.finished(task,
                       {.failure = {}, .warning = warnings_[task], .sourceLines = lines_[task]});
  }

  // ---------------------------------------------------------------------------------- the passes

  struct ReadFacts {
    vb::Module module;
    site::ModuleFacts facts;
  };

  // Nothing when it failed.
  std::optional<ReadFacts> readFacts(std::size_t task) {
    std::optional<ReadFacts> result;
    if (!failures_[task].empty() || !goesOn()) return result;
    Outcome outcome = outcomeOf([&] {
      vb::Module module = read(task);
      site::ModuleFacts facts = site::factsOf(module, order_.reading.words);
      result = ReadFacts{std::move(module), std::move(facts)};
      return Outcome();
    });
    if (!result) fail(task, std::move(outcome));
    observer_.read();
    return result;
  }

  // The first pass: what each module shows to the others, in their order.
  void readProject(const SourceProject& source) {
    site::Project& project =
        site_.projects.emplace_back(source.name, source.declaredName, source.isLibrary, listing_);
    inParallelInOrder<std::optional<ReadFacts>>(
        source.tasks.size(), order_.jobs, [&](std::size_t i) { return readFacts(source.tasks[i]); },
        [&](std::size_t i, std::optional<ReadFacts> read) {
          if (read) admit(source.tasks[i], project, std::move(*read));
        });
    project.close();
  }

  void admit(std::size_t task, site::Project& project, ReadFacts read) {
    const Task& source = inputs_.tasks[task];
    read.facts.file = exactText(pathText(source.input.place.generic_u8string()));
    indices_[task] = project.add(read.module, std::move(read.facts),
                                 listing::addressOf(source.target.generic_u8string()), site_.names);
    lines_[task] = read.module.lines;
    store_.put(task, std::move(read.module), source.input);
  }

  // Calls work(task, module, index) for each module of a project, on several threads.
  template <class Work>
  void forModules(const SourceProject& source, Work work) {
    inParallel(source.tasks.size(), order_.jobs, [&](std::size_t i) {
      const std::size_t task = source.tasks[i];
      if (!indices_[task] || !goesOn()) return;
      Outcome outcome = outcomeOf([&] {
        work(task, store_.take(task), *indices_[task]);
        return Outcome();
      });
      if (!outcome.failure.empty()) fail(task, std::move(outcome));
    });
  }

  // The second pass: who uses what.
  void bind(std::size_t index) {
    site::Project& project = site_.projects[index];
    forModules(inputs_.projects[index],
               [&](std::size_t task, vb::Module module, std::uint32_t place) {
                 project.addUses(module, place, site_.names);
                 store_.put(task, std::move(module), inputs_.tasks[task].input);
               });
    project.finish();
  }

  // The pages tell them in their own language.
  void addFailures() {
    for (std::size_t task = 0; task < failures_.size(); ++task)
      if (!failures_[task].empty())
        site_.failures.push_back({exactText(pathText(inputs_.tasks[task].input.path)),
                                  exactText(failures_[task].in(listing_.language))});
  }

  // ------------------------------------------------------------------------------------- results

  // Writes what belongs to no input.
  void writeOrTell(const fs::path& target, const std::function<void(std::ostream&)>& content) {
    orTell([&] { writeFile(target, order_.writing, content); });
  }

  void orTell(const std::function<void()>& write) {
    if (!goesOn()) return;
    const Outcome outcome = outcomeOf([&] {
      write();
      return Outcome();
    });
    if (outcome.failure.empty()) return;
    complete_ = false;
    observer_.unwritten(outcome.failure);
  }

  void writeSite() {
    const listing::DocumentMaker maker(listing::Format::Page, listing_, listing::Place::OwnPages);
    for (std::size_t i = 0; i < inputs_.projects.size(); ++i)
      forModules(
          inputs_.projects[i], [&](std::size_t task, vb::Module module, std::uint32_t place) {
            const std::vector<vb::Reference> references = site_.projects[i].resolve(module, place);
            writeFile(pageOf(inputs_.tasks[task], order_), order_.writing, [&](std::ostream& out) {
              site::writeModulePage(out, site_.projects[i], place, module, references, maker);
            });
            done(task);
          });
    const std::vector<fs::path> pages = resultsOf(order_);
    inParallel(pages.size(), order_.jobs, [&](std::size_t page) {
      writeOrTell(pages[page], [&](std::ostream& out) {
        site::writePage(static_cast<site::Page>(page), out, site_, listing_);
      });
    });
    if (!ended_) tellStalePages();
  }

  void tellStalePages() {
    std::set<fs::path::string_type> pages;
    for (const SourceProject& project : inputs_.projects)
      for (const std::size_t task : project.tasks)
        pages.insert(fileNameKey(pageOf(inputs_.tasks[task], order_)));
    std::set<fs::path> stale;
    std::error_code none;
    fs::recursive_directory_iterator entry(order_.folder / site::kModuleFolder, none);
    for (; !none && entry != fs::recursive_directory_iterator(); entry.increment(none))
      if (entry->path().extension() == ".htm" && !pages.contains(fileNameKey(entry->path())))
        stale.insert(entry->path());
    for (const fs::path& page : stale) observer_.stale(page);
  }

  // Of data, modules are done once all is known of them.
  void finishAll() {
    for (std::size_t task = 0; task < inputs_.tasks.size(); ++task)
      if (indices_[task]) done(task);
  }

  void writeTables() {
    const std::vector<fs::path> files = resultsOf(order_);
    for (std::size_t table = 0; table < files.size(); ++table)
      writeOrTell(files[table], [&](std::ostream& out) {
        site::writeCsv(static_cast<site::Table>(table), out, site_);
      });
  }

  void writeData() {
    const auto content = [&](std::ostream& out) { site::writeJson(out, site_); };
    if (order_.stream == nullptr) return writeOrTell(resultsOf(order_).front(), content);
    orTell([&] { writeOutput(*order_.stream, order_.writing, content); });
  }

  const ProjectInputs& inputs_;
  const ProjectOrder& order_;
  ProjectObserver& observer_;
  listing::Options listing_;
  ModuleStore store_;
  std::vector<std::optional<std::uint32_t>> indices_;  // by task, in its project
  std::vector<Message> failures_, warnings_;           // by task
  std::vector<std::size_t> lines_;                     // by task
  site::Site site_;
  std::atomic<bool> ended_ = false;
  std::atomic<bool> complete_ = true;
};

}  // namespace

std::vector<fs::path> resultsOf(const ProjectOrder& order) {
  std::vector<fs::path> files;
  const auto add = [&](const auto& names) {
    for (const std::u8string_view name : names) files.push_back(order.folder / name);
  };
  if (order.form == Form::Site)
    add(site::kPageFiles);
  else if (order.form == Form::Tables)
    add(site::kTableFiles);
  else if (order.stream == nullptr)
    files.push_back(order.dataFile.empty() ? order.folder / kDataFile : order.dataFile);
  return files;
}

fs::path pageOf(const Task& task, const ProjectOrder& order) {
  return order.folder / site::kModuleFolder / task.target;
}

bool documentProjects(const ProjectInputs& inputs, const ProjectOrder& order,
                      ProjectObserver& observer) {
  return ProjectRun(inputs, order, observer).run();
}

}  // namespace tintline
