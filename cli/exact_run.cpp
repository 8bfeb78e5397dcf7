// A run in the exact mode. See exact_run.h.
// Tested by tests/cli/run.py and tests/golden/run.py.
#include "cli/exact_run.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "base/codepage.h"
#include "base/parallel.h"
#include "cli/job.h"
#include "convert/exact.h"
#include "runs/module_store.h"

namespace tintline {
namespace {

// Modules of a project are kept between its two passes while they need no more memory than this
// times the size of all sources and some room beside it.
constexpr double kKeptPerSource = 2.5;
constexpr std::size_t kKeptBeside = 8U << 20;

// Links from one page to another.
bool linksPages(Format format, const listing::Options& options) {
  return options.links == listing::Links::All &&
         (format == Format::Page || format == Format::Body || format == Format::Json);
}

// A module of a project between its two passes.
struct Member {
  std::size_t task;
  Message warning{};
  std::optional<std::uint32_t> index{};  // in the project; none: it could not be read
};

// The identity of the folder that modules lie in, and that of their pages.
using Folders = std::pair<std::filesystem::path::string_type, std::filesystem::path>;

class ExactRun {
 public:
  ExactRun(const std::vector<Task>& tasks, const Options& options, const Settings& settings,
           const Surroundings& surroundings, Report& report)
      : tasks_(tasks),
        options_(options),
        reading_(readingOf(options, settings)),
        listing_(listingOptions(options, settings)),
        maker_(listingFormat(options.format), listing_,
               isOneDocument() ? listing::Place::OnePage : listing::Place::OwnPages),
        surroundings_(surroundings),
        report_(report),
        jobs_(jobsOf(options, tasks.size())) {}

  void run() {
    if (isOneDocument()) return writeOneDocument();
    if (tasks_.size() == 1 || !linksPages(options_.format, listing_)) return convertAlone();
    for (const auto& [folders, members] : projects()) convertProject(members);
  }

 private:
  bool isOneDocument() const { return options_.outputDir.empty() && tasks_.size() > 1; }

  ReadModule read(const Task& task) const {
    ReadModule source = readModule(task.input, reading_);
    checkLines(options_.lines, source.module.lines);
    return source;
  }

  // Each input is a project of its own.
  void convertAlone() {
    const std::vector<std::size_t> order = workOrder(tasks_, jobs_);
    inParallel(order.size(), jobs_, [&](std::size_t place) {
      const Task& task = tasks_[order[place]];
      report_.finished(order[place], outcomeOf([&] {
                         const ReadModule source = read(task);
                         ExactProject project(maker_);
                         project.add(source.module, {});
                         project.close();
                         return write(task, project, source, 0);
                       }));
    });
  }

  Outcome write(const Task& task, const ExactProject& project, const ReadModule& source,
                std::uint32_t index) const {
    writeTarget(task, options_, surroundings_, [&](std::ostream& out) {
      project.write(source.module, index, exactText(pathText(task.input.place.filename())), out);
    });
    return {.failure = {}, .warning = source.warning, .sourceLines = source.module.lines};
  }

  // Modules of one folder, whose pages lie in one folder as well, are a project.
  std::map<Folders, std::vector<Member>> projects() const {
    std::map<Folders, std::vector<Member>> result;
    for (std::size_t i = 0; i < tasks_.size(); ++i)
      result[{tasks_[i].input.folder, tasks_[i].target.parent_path()}].push_back({.task = i});
    return result;
  }

  // For the modules of members, by their indices there.
  ModuleStore storeFor(const std::vector<Member>& members) const {
    double sources = 0;
    for (const Member& member : members)
      sources += static_cast<double>(tasks_[member.task].input.file.size);
    return ModuleStore(
        members.size(), kKeptBeside + static_cast<std::size_t>(kKeptPerSource * sources),
        [this, &members](std::size_t i) { return read(tasks_[members[i].task]).module; });
  }

  // Reads all modules and makes them known to each other, in the order of the inputs.
  void readAll(std::vector<Member>& members, ExactProject& project, ModuleStore& store) const {
    using Source = std::optional<ReadModule>;
    inParallelInOrder<Source>(
        members.size(), jobs_,
        [&](std::size_t i) {
          Source source;
          const Outcome outcome = outcomeOf([&] {
            source = read(tasks_[members[i].task]);
            return Outcome();
          });
          if (!source) report_.finished(members[i].task, outcome);
          return source;
        },
        [&](std::size_t i, Source source) {
          if (!source) return;
          const Task& task = tasks_[members[i].task];
          members[i].index = project.add(source->module, task.target.filename());
          members[i].warning = std::move(source->warning);
          store.put(i, std::move(source->module), task.input);
        });
    project.close();
  }

  void convertProject(std::vector<Member> members) {
    ExactProject project(maker_);
    ModuleStore store = storeFor(members);
    readAll(members, project, store);
    inParallel(members.size(), jobs_, [&](std::size_t i) {
      const Member& member = members[i];
      if (!member.index) return;
      report_.finished(member.task, outcomeOf([&] {
                         return write(tasks_[member.task], project,
                                      {.module = store.take(i), .warning = member.warning},
                                      *member.index);
                       }));
    });
  }

  void writeOneDocument() {
    std::vector<Member> members;
    for (std::size_t i = 0; i < tasks_.size(); ++i) members.push_back({.task = i});
    ExactProject project(maker_);
    ModuleStore store = storeFor(members);
    readAll(members, project, store);
    const auto count = std::ranges::count_if(members, &isRead);
    if (count == 0) return;
    const Task& first = tasks_[std::ranges::find_if(members, &isRead)->task];
    std::vector<std::size_t> lines(members.size());
    const Outcome outcome = outcomeOf([&] {
      writeTarget(first, options_, surroundings_, [&](std::ostream& out) {
        const std::u8string title = documentTitle(first, static_cast<std::size_t>(count));
        const auto document = project.makeDocument(title, out);
        for (std::size_t i = 0; i < members.size(); ++i) {
          if (!isRead(members[i])) continue;
          const vb::Module module = store.take(i);
          project.write(module, *members[i].index, *document);
          lines[i] = module.lines;
        }
        document->close();
      });
      return Outcome();
    });
    if (!outcome.failure.empty())
      return surroundings_.tell({.severity = Notice::Severity::Error, .message = outcome.failure});
    for (std::size_t i = 0; i < members.size(); ++i)
      if (isRead(members[i]))
        report_.finished(members[i].task,
                         {.failure = {}, .warning = members[i].warning, .sourceLines = lines[i]});
  }

  static bool isRead(const Member& member) { return member.index.has_value(); }

  // That of the output, else of the first module.
  static std::u8string documentTitle(const Task& first, std::size_t modules) {
    if (!first.target.empty()) return exactText(pathText(first.target.stem()));
    const std::wstring name = pathText(first.input.place.filename());
    return exactText(modules == 1 ? name : name + L" + " + std::to_wstring(modules - 1));
  }

  const std::vector<Task>& tasks_;
  const Options& options_;
  const Reading reading_;
  const listing::Options listing_;
  const listing::DocumentMaker maker_;
  const Surroundings& surroundings_;
  Report& report_;
  const std::size_t jobs_;
};

}  // namespace

Reading readingOf(const Options& options, const Settings& settings) {
  return {.encoding = options.encoding,
          .header = options.header,
          .words = exactKeywords(settings),
          .passes = passesOf(options)};
}

listing::Options listingOptions(const Options& options, const Settings& settings) {
  listing::Options result;
  result.links = options.links.value_or(result.links);
  result.titles = options.titles.value_or(result.titles);
  result.header = options.header.value_or(result.header);
  result.theme = options.theme.value_or(result.theme);
  result.lineNumbers = options.lineNumbers;
  if (options.style == StyleMode::Inline) {
    result.style = listing::Style::Inline;
    if (!options.links) result.links = listing::Links::None;
  }
  for (const LineRange& range : options.lines)
    result.lines.push_back({.first = static_cast<std::uint32_t>(range.first),
                            .last = static_cast<std::uint32_t>(range.last)});
  result.language = settings.language;
  result.colors = userColors(settings, options);
  result.css = settings.css;
  return result;
}

void runExact(const std::vector<Task>& tasks, const Options& options, const Settings& settings,
              const Surroundings& surroundings, Report& report) {
  ExactRun(tasks, options, settings, surroundings, report).run();
}

}  // namespace tintline
