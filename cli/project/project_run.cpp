// See project_run.h. Tested by tests/cli/project.py.
#include "cli/project/project_run.h"

#include <atomic>
#include <filesystem>
#include <mutex>
#include <optional>
#include <set>
#include <system_error>
#include <utility>
#include <vector>

#include "base/codepage.h"
#include "base/file.h"
#include "cli/exact_run.h"
#include "cli/job.h"
#include "cli/messages.h"
#include "cli/project/module_store.h"
#include "cli/project/source_projects.h"
#include "cli/report.h"
#include "convert/exact.h"
#include "convert/source_text.h"
#include "site/data.h"
#include "site/pages.h"
#include "site/words.h"

namespace tintline {
namespace {

namespace fs = std::filesystem;

// The JSON document where a folder takes it.
constexpr std::u8string_view kDataFile = u8"projekt.json";

class ProjectRun {
 public:
  ProjectRun(const Options& options, const SettingsFiles& files, const Settings& settings,
             const Surroundings& surroundings)
      : options_(options),
        files_(files),
        surroundings_(surroundings),
        sources_(findProjects(options)),
        words_(exactKeywords(settings)),
        passes_(passesOf(options)),
        listing_(listingOptions(options, settings)),
        jobs_(jobsOf(options, sources_.tasks.size())),
        store_(sources_.tasks, [this](std::size_t task) { return read(task); }),
        report_(inputFiles(sources_.tasks), surroundings.write, tellingOf(options, surroundings)),
        indices_(sources_.tasks.size()),
        failures_(sources_.tasks.size()),
        warnings_(sources_.tasks.size()),
        lines_(sources_.tasks.size()) {
    options_.skipUnchanged = true;
    listing_.lineNumbers = true;  // links lead to lines
    site_.title = sources_.title;
  }

  ExitCode run() {
    checkTargets();
    for (std::size_t task = 0; task < sources_.tasks.size(); ++task)
      if (!sources_.tasks[task].input.failure.empty())
        fail(task, {.failure = sources_.tasks[task].input.failure});
    for (const SourceProject& source : sources_.projects) readProject(source);
    for (std::size_t i = 0; i < sources_.projects.size(); ++i) bind(i);
    for (std::size_t task = 0; task < failures_.size(); ++task)
      if (!failures_[task].empty())
        site_.failures.push_back({exactText(inputFile(sources_.tasks[task])),
                                  exactText(failures_[task].in(surroundings_.language))});
    if (options_.format == Format::Page)
      writeSite();
    else
      writeData();
    return report_.close() && written_ ? kAllConverted : kSomeFailed;
  }

 private:
  vb::Module read(std::size_t task) {
    ReadModule source = readModule(sources_.tasks[task], options_, words_, passes_, surroundings_);
    warnings_[task] = std::move(source.warning);
    return std::move(source.module);
  }

  // Nothing that is read may be written.
  void checkTargets() const {
    std::vector<Task> tasks = sources_.tasks;
    for (Task& task : tasks)
      if (!task.target.empty()) task.target = outputPath(site::kModuleFolder) / task.target;
    const auto add = [&](fs::path target) {
      tasks.push_back({.input = {}, .target = std::move(target)});
    };
    for (const std::u8string_view file : site::kPageFiles) add(outputPath(file));
    for (const std::u8string_view file : site::kTableFiles) add(outputPath(file));
    add(outputPath(kDataFile));
    if (!options_.output.empty()) add(argumentPath(options_.output));
    checkNothingReadIsOverwritten(tasks, files_);
  }

  // Of a task with which nothing more is done.
  void fail(std::size_t task, Outcome outcome) {
    failures_[task] = outcome.failure;
    indices_[task].reset();
    report_.finished(task, std::move(outcome));
  }

  void done(std::size_t task) {
    report_.finished(task,
                     {.failure = {}, .warning = warnings_[task], .sourceLines = lines_[task]});
  }

  // The first pass: what each module shows to the others, in their order.
  void readProject(const SourceProject& source) {
    site::Project& project =
        site_.projects.emplace_back(source.name, source.declaredName, source.isLibrary, listing_);
    struct Read {
      vb::Module module;
      site::ModuleFacts facts;
    };
    std::vector<std::optional<Read>> waiting(source.tasks.size());
    std::vector<bool> done(source.tasks.size());
    std::size_t next = 0;
    std::mutex mutex;  // guards all of them, and the project
    inParallel(source.tasks.size(), std::min(jobs_, source.tasks.size()), [&](std::size_t i) {
      const std::size_t task = source.tasks[i];
      std::optional<Read> read;
      Outcome outcome = failures_[task].empty() ? outcomeOf([&] {
        vb::Module module = this->read(task);
        site::ModuleFacts facts = site::factsOf(module, words_);
        read.emplace(std::move(module), std::move(facts));
        return Outcome();
      })
                                                : Outcome();
      if (!outcome.failure.empty()) fail(task, std::move(outcome));
      report_.noteRead();
      const std::lock_guard lock(mutex);
      waiting[i] = std::move(read);
      done[i] = true;
      for (; next < done.size() && done[next]; ++next)
        if (waiting[next]) {
          admit(source.tasks[next], project, std::move(waiting[next]->module),
                std::move(waiting[next]->facts));
          waiting[next].reset();
        }
    });
    project.close();
  }

  void admit(std::size_t task, site::Project& project, vb::Module module, site::ModuleFacts facts) {
    const Task& source = sources_.tasks[task];
    facts.file = exactText(pathText(source.input.place.generic_u8string()));
    indices_[task] = project.add(module, std::move(facts),
                                 listing::addressOf(source.target.generic_u8string()), site_.names);
    lines_[task] = module.lines;
    store_.put(task, std::move(module));
  }

  // Calls work(task, module, index) for each module of a project, on several threads.
  template <class Work>
  void forModules(const SourceProject& source, Work work) {
    inParallel(source.tasks.size(), std::min(jobs_, source.tasks.size()), [&](std::size_t i) {
      const std::size_t task = source.tasks[i];
      if (!indices_[task]) return;
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
    forModules(sources_.projects[index],
               [&](std::size_t task, vb::Module module, std::uint32_t place) {
                 project.addUses(module, place, site_.names);
                 store_.put(task, std::move(module));
               });
    project.finish();
  }

  // ------------------------------------------------------------------------------------- results

  fs::path outputPath(std::u8string_view file) const {
    return argumentPath(options_.outputDir) / fs::path(file);
  }

  // Writes what belongs to no input.
  void writeOrTell(const fs::path& target, const std::function<void(std::ostream&)>& content) {
    const Outcome outcome = outcomeOf([&] {
      writeTarget({.input = {}, .target = target}, options_, surroundings_, content);
      return Outcome();
    });
    if (outcome.failure.empty()) return;
    surroundings_.tell({.severity = Notice::Severity::Error, .message = outcome.failure});
    written_ = false;
  }

  void writeSite() {
    const fs::path folder = outputPath(site::kModuleFolder);
    for (std::size_t i = 0; i < sources_.projects.size(); ++i)
      forModules(
          sources_.projects[i], [&](std::size_t task, vb::Module module, std::uint32_t place) {
            const std::vector<vb::Reference> references = site_.projects[i].resolve(module, place);
            const Task written{.input = {}, .target = folder / sources_.tasks[task].target};
            writeTarget(written, options_, surroundings_, [&](std::ostream& out) {
              site::writeModulePage(out, site_.projects[i], place, module, references, listing_);
            });
            done(task);
          });
    inParallel(site::kPages, jobs_, [&](std::size_t page) {
      writeOrTell(outputPath(site::kPageFiles[page]), [&](std::ostream& out) {
        site::writePage(static_cast<site::Page>(page), out, site_, listing_);
      });
    });
    nameStalePages(folder);
  }

  // Pages of modules that there are no more; nobody deletes what he did not make.
  void nameStalePages(const fs::path& folder) {
    std::set<fs::path::string_type> pages;
    for (const SourceProject& project : sources_.projects)
      for (const std::size_t task : project.tasks)
        pages.insert(fileNameKey(folder / sources_.tasks[task].target));
    std::set<fs::path> stale;
    std::error_code none;
    fs::recursive_directory_iterator entry(folder, none);
    for (; !none && entry != fs::recursive_directory_iterator(); entry.increment(none))
      if (entry->path().extension() == ".htm" && !pages.contains(fileNameKey(entry->path())))
        stale.insert(entry->path());
    for (const fs::path& page : stale)
      surroundings_.tell({.severity = Notice::Severity::Note,
                          .file = pathText(page),
                          .message = messages::kPageOfNoModule()});
  }

  void writeData() {
    for (std::size_t i = 0; i < sources_.tasks.size(); ++i)
      if (indices_[i]) done(i);
    if (options_.format == Format::Csv) {
      for (std::size_t table = 0; table < site::kTableFiles.size(); ++table)
        writeOrTell(outputPath(site::kTableFiles[table]), [&](std::ostream& out) {
          site::writeCsv(static_cast<site::Table>(table), out, site_);
        });
    } else {
      fs::path target;
      if (!options_.outputDir.empty())
        target = outputPath(kDataFile);
      else if (options_.output != kStandardStream)
        target = argumentPath(options_.output);
      writeOrTell(target, [&](std::ostream& out) { site::writeJson(out, site_); });
    }
  }

  Options options_;
  const SettingsFiles& files_;
  const Surroundings& surroundings_;
  const SourceProjects sources_;
  const vb::WordLists words_;
  const std::vector<Reformatting> passes_;
  listing::Options listing_;
  const std::size_t jobs_;
  ModuleStore store_;
  Report report_;
  std::vector<std::optional<std::uint32_t>> indices_;  // by task, in its project
  std::vector<Message> failures_, warnings_;           // by task
  std::vector<std::size_t> lines_;                     // by task
  site::Site site_;
  bool written_ = true;  // all that belongs to no input
};

}  // namespace

ExitCode documentProjects(const Options& options, const SettingsFiles& files,
                          const Settings& settings, const Surroundings& surroundings) {
  return ProjectRun(options, files, settings, surroundings).run();
}

}  // namespace tintline
