// A run in the exact mode. See exact_run.h.
// Tested by tests/cli/run.py and tests/golden/run.py.
#include "cli/exact_run.h"

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include "base/codepage.h"
#include "cli/job.h"
#include "cli/messages.h"
#include "cli/office_inputs.h"
#include "convert/exact.h"
#include "convert/source_text.h"

namespace tintline {
namespace {

// Modules of a project are kept between its two passes while they need no more memory than this
// times the size of all sources and some room beside it; the others are read once more.
constexpr double kKeptPerSource = 2.5;
constexpr std::size_t kKeptBeside = 8U << 20;

std::size_t memoryOf(const vb::Module& module) {
  return module.text.capacity() + module.tokens.capacity() * sizeof(vb::Token) +
         module.declarations.capacity() * sizeof(vb::Declaration);
}

std::size_t hashOf(const vb::Module& module) {
  return std::hash<std::u8string_view>()(module.text);
}

// Links from one page to another.
bool linksPages(Format format, const listing::Options& options) {
  return options.links == listing::Links::All &&
         (format == Format::Page || format == Format::Body || format == Format::Json);
}

// The number of the line that holds a place in the text, from 1.
std::size_t lineOf(std::u8string_view text, std::size_t place) {
  std::size_t line = 1;
  for (std::size_t i = 0; i < place; ++i)
    line += text[i] == u8'\n' || (text[i] == u8'\r' && text[i + 1] != u8'\n');
  return line;
}

// What decoding a source lost, for the user; empty: nothing.
Message lossText(const vb::Decoded& source) {
  if (source.replaced == 0) return {};
  const Message page =
      source.codePage == vb::kUtf8 ? valueOf(L"UTF-8") : messages::kCodePage(source.codePage);
  return atLine(lineOf(source.text, source.text.find(u8"\uFFFD")),
                source.replaced == 1 ? messages::kLostCharacter(page)
                                     : messages::kLostCharacters(source.replaced, page));
}

// A module of a project between its two passes.
struct Member {
  std::size_t task;
  Message warning{};
  std::optional<vb::Module> module;      // unless it has to be read once more
  std::optional<std::uint32_t> index{};  // in the project; none: it could not be read
  std::size_t hash = 0;
};

// The identity of the folder that modules lie in, and that of their pages.
using Folders = std::pair<std::filesystem::path::string_type, std::filesystem::path>;

class ExactRun {
 public:
  ExactRun(const std::vector<Task>& tasks, const Options& options, const Settings& settings,
           const Surroundings& surroundings, Report& report)
      : tasks_(tasks),
        options_(options),
        words_(exactKeywords(settings)),
        passes_(passesOf(options)),
        listing_(listingOptions(options, settings)),
        surroundings_(surroundings),
        report_(report),
        jobs_(jobsOf(options, tasks.size())) {}

  void run() {
    if (options_.outputDir.empty() && tasks_.size() > 1) return writeOneDocument();
    if (tasks_.size() == 1 || !linksPages(options_.format, listing_)) return convertAlone();
    for (const auto& [folders, members] : projects()) convertProject(members);
  }

 private:
  ReadModule read(const Task& task) const {
    ReadModule source = readModule(task, options_, words_, passes_, surroundings_);
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
                         ExactProject project(options_.format, listing_, listing::Place::OwnPages);
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
      result[{tasks_[i].input.folder, tasks_[i].target.parent_path()}].push_back(
          {.task = i, .module = {}});
    return result;
  }

  // Reads all modules and makes them known to each other, in the order of the inputs.
  void readAll(std::vector<Member>& members, ExactProject& project) const {
    std::size_t room = kKeptBeside;
    for (const Member& member : members)
      room += static_cast<std::size_t>(kKeptPerSource *
                                       static_cast<double>(tasks_[member.task].input.file.size));
    std::mutex mutex;  // guards what follows, and the project
    std::vector<bool> read(members.size());
    std::size_t next = 0;  // all in front of it are in the project
    inParallel(members.size(), std::min(jobs_, members.size()), [&](std::size_t i) {
      const Outcome outcome = outcomeOf([&] {
        ReadModule source = this->read(tasks_[members[i].task]);
        members[i].module = std::move(source.module);
        members[i].warning = std::move(source.warning);
        return Outcome();
      });
      if (!members[i].module) report_.finished(members[i].task, outcome);
      const std::lock_guard lock(mutex);
      read[i] = true;
      for (; next < members.size() && read[next]; ++next) admit(members[next], project, room);
    });
    project.close();
  }

  void admit(Member& member, ExactProject& project, std::size_t& room) const {
    if (!member.module) return;
    const Task& task = tasks_[member.task];
    member.index = project.add(*member.module, task.target.filename());
    const std::size_t memory = memoryOf(*member.module);
    const bool readable = task.input.file.kind == FoundFile::Kind::File;  // a second time
    if (readable && memory > room) {
      member.hash = hashOf(*member.module);
      member.module.reset();
    } else {
      room -= std::min(memory, room);
    }
  }

  // The module of a member that is in the project, which gives it away.
  vb::Module take(Member& member) const {
    if (member.module) {
      vb::Module module = std::move(*member.module);
      member.module.reset();
      return module;
    }
    vb::Module module = read(tasks_[member.task]).module;
    if (hashOf(module) != member.hash) throw JobError(messages::kChangedMeanwhile());
    return module;
  }

  void convertProject(std::vector<Member> members) {
    ExactProject project(options_.format, listing_, listing::Place::OwnPages);
    readAll(members, project);
    inParallel(members.size(), std::min(jobs_, members.size()), [&](std::size_t i) {
      Member& member = members[i];
      if (!member.index) return;
      report_.finished(member.task, outcomeOf([&] {
                         return write(tasks_[member.task], project,
                                      {.module = take(member), .warning = member.warning},
                                      *member.index);
                       }));
    });
  }

  void writeOneDocument() {
    std::vector<Member> members;
    for (std::size_t i = 0; i < tasks_.size(); ++i) members.push_back({.task = i, .module = {}});
    ExactProject project(options_.format, listing_, listing::Place::OnePage);
    readAll(members, project);
    std::erase_if(members, [](const Member& member) { return !member.index; });
    if (members.empty()) return;
    const Task& first = tasks_[members.front().task];
    std::vector<std::size_t> lines;
    const Outcome outcome = outcomeOf([&] {
      writeTarget(first, options_, surroundings_, [&](std::ostream& out) {
        const std::u8string title = documentTitle(first, members.size());
        const auto document = project.makeDocument(title, out);
        for (Member& member : members) {
          const vb::Module module = take(member);
          project.write(module, *member.index, *document);
          lines.push_back(module.lines);
        }
        document->close();
      });
      return Outcome();
    });
    if (!outcome.failure.empty())
      return surroundings_.tell({.severity = Notice::Severity::Error, .message = outcome.failure});
    for (std::size_t i = 0; i < members.size(); ++i)
      report_.finished(members[i].task,
                       {.failure = {}, .warning = members[i].warning, .sourceLines = lines[i]});
  }

  // That of the output, else of the first module.
  static std::u8string documentTitle(const Task& first, std::size_t modules) {
    if (!first.target.empty()) return exactText(pathText(first.target.stem()));
    const std::wstring name = pathText(first.input.place.filename());
    return exactText(modules == 1 ? name : name + L" + " + std::to_wstring(modules - 1));
  }

  const std::vector<Task>& tasks_;
  const Options& options_;
  const vb::WordLists words_;
  const std::vector<Reformatting> passes_;
  const listing::Options listing_;
  const Surroundings& surroundings_;
  Report& report_;
  const std::size_t jobs_;
};

}  // namespace

ReadModule readModule(const Task& task, const Options& options, const vb::WordLists& words,
                      const std::vector<Reformatting>& passes, const Surroundings& surroundings) {
  const OfficeModule* const office = task.input.module.get();
  const vb::CodePage page =
      office != nullptr ? office->codePage : options.encoding.value_or(kAutomatic);
  // Of an Office module the user knows what the editor shows.
  const auto usual = office != nullptr ? listing::Header::Drop : listing::Header::Fold;
  const bool asInEditor = options.header.value_or(usual) == listing::Header::Drop;
  vb::Decoded source = decodeSource(readInput(task, surroundings), page);
  Message warning = warningOf(task.input, lossText(source));
  return {.module = readExact(std::move(source.text), task.input.place.filename(), words, passes,
                              asInEditor),
          .warning = std::move(warning)};
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
