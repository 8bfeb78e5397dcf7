// See office_index.h. Tested by tests/cli/run.py.
#include "cli/office_index.h"

#include <filesystem>
#include <map>
#include <string>

#include "base/codepage.h"
#include "cli/job.h"
#include "cli/messages.h"
#include "convert/exact.h"
#include "convert/office_text.h"
#include "runs/office_inputs.h"
#include "site/words.h"

namespace tintline {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kDocumentHead =
    "\">\n<head>\n<meta charset=\"utf-8\">\n"
    "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src "
    "'unsafe-inline'\">\n"
    "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n";
constexpr std::string_view kStyle =
    "<style>\nhtml{background:Canvas;color:CanvasText}\nbody{font:1em/1.5 "
    "system-ui,sans-serif;max-width:60em;margin:1em auto;"
    "padding:0 1em}\ntd,th{text-align:left;padding:.1em 1em .1em 0}\n"
    "td:last-child,th:last-child{text-align:right}\n</style>\n</head>\n<body>\n<main>\n";

std::string html(std::wstring_view text) {
  std::string result;
  for (const char c : toUtf8(text)) {
    if (c == '&')
      result += "&amp;";
    else if (c == '<')
      result += "&lt;";
    else if (c == '>')
      result += "&gt;";
    else if (c == '"')
      result += "&quot;";
    else
      result += c;
  }
  return result;
}

std::string html(std::u8string_view text) { return html(fromUtf8(text)); }

// A page without colours of its own: the browser's, as far as the theme lets it choose.
std::string headOf(const Options& options, Language language) {
  using enum listing::Theme;
  const listing::Theme theme = options.theme.value_or(Auto);
  const std::string schemes = theme == Auto ? "light dark" : theme == Dark ? "dark" : "light";
  return std::string("<!DOCTYPE html>\n<html lang=\"") +
         (language == Language::German ? "de" : "en") + std::string(kDocumentHead) +
         "<meta name=\"color-scheme\" content=\"" + schemes + "\">\n";
}

std::string rowOf(const Task& task, const fs::path& folder, Language language) {
  const OfficeModule& module = *task.input.module;
  const std::u8string address = addressOf(task.target.lexically_relative(folder));
  return "<tr><td><a href=\"" + std::string(address.begin(), address.end()) + "\">" +
         html(module.name) + "</a></td><td>" + html(kindText(module.kind).in(language)) +
         "</td><td>" + std::to_string(module.lines) + "</td></tr>\n";
}

// The page of one file: a table for each project.
std::string pageOf(const std::vector<const Task*>& tasks, const fs::path& folder,
                   const Options& options, Language language) {
  const site::Words& words = site::wordsOf(language);
  const std::string title = html(pathText(tasks.front()->input.path.filename()));
  std::string page = headOf(options, language);
  page += "<title>" + title + "</title>\n";
  page.append(kStyle).append("<h1>" + title + "</h1>\n");
  const auto mark = [&](bool isMarked, const Text<0>& word) {
    return isMarked ? " (" + html(word.in(language)) + ")" : std::string();
  };
  const OfficeProject* project = nullptr;
  for (const Task* task : tasks) {
    if (task->input.module->project.get() != project) {
      if (project != nullptr) page += "</table>\n";
      project = task->input.module->project.get();
      page += "<h2>" + html(project->name) + mark(project->locked, messages::kLocked) +
              mark(project->isSigned, messages::kSigned) + "</h2>\n<table>\n<tr><th>" +
              html(words.module) + "</th><th>" + html(words.kind) + "</th><th>" +
              html(words.lines) + "</th></tr>\n";
    }
    page += rowOf(*task, folder, language);
  }
  return page + "</table>\n</main>\n</body>\n</html>\n";
}

// No page of a module may be called so.
fs::path indexName(const std::vector<const Task*>& tasks, const fs::path& folder) {
  FreeNames names;
  for (const Task* task : tasks)
    if (task->target.parent_path() == folder)
      names.take(folder, pathText(task->target.stem()), L".htm");
  return names.take(folder, L"index", L".htm");
}

}  // namespace

bool writeOfficeIndexes(const std::vector<Task>& tasks, const Options& options, Language language,
                        const Surroundings& surroundings) {
  if (options.outputDir.empty() || options.format != Format::Page) return true;
  if (options.mode == Mode::Classic) language = Language::German;
  std::map<fs::path, std::vector<const Task*>> files;
  for (const Task& task : tasks)
    if (task.input.module)
      files[argumentPath(options.outputDir) / task.input.module->project->place].push_back(&task);
  bool allWritten = true;
  for (const auto& each : files) {
    const auto& folder = each.first;
    const auto& members = each.second;
    const Task index{.input = {}, .target = indexName(members, folder)};
    if (options.dryRun) {
      const Message line = messages::kWouldBecome(valueOf(pathText(members.front()->input.path)),
                                                  targetName(index.target));
      surroundings.output << toUtf8(line.in(surroundings.language)) << std::flush;
      continue;
    }
    const Outcome outcome = outcomeOf([&] {
      writeTarget(index, options, surroundings,
                  [&](std::ostream& out) { out << pageOf(members, folder, options, language); });
      return Outcome();
    });
    if (outcome.failure.empty()) continue;
    allWritten = false;
    surroundings.tell({.severity = Notice::Severity::Error, .message = outcome.failure});
  }
  return allWritten;
}

}  // namespace tintline
