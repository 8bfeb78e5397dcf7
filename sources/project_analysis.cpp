// See project_analysis.h. Tested by tests/unit/sources/sources_test.cpp.
#include "sources/project_analysis.h"

#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/codepage.h"
#include "base/text.h"

namespace tintline {
namespace {

// Every head holds one of these words, and few other lines do.
bool mayBeHead(std::string_view line) {
  return containsIgnoreCase(line, "Sub") || containsIgnoreCase(line, "Function") ||
         containsIgnoreCase(line, "Property");
}

// The procedures of a code module, found one after the other.
class ProcedureWalk {
 public:
  ProcedureWalk(const CodeModule& code, const ComponentSummary& component)
      : code_(code), line_(std::int64_t{component.declarationLines} + 1), last_(component.lines) {}

  bool atEnd() const { return line_ > last_; }

  // What begins at the present line; nothing for a line that belongs to no procedure
  // or to one that is known. Goes on to the line behind what was found, or to the next one
  // that may be a head.
  std::optional<ProcedureSummary> next() {
    ProcedureSummary found;
    const auto line = static_cast<std::int32_t>(line_++);
    found.name = code_.ProcOfLine(line, found.kind);
    if (found.name.empty() || !known_.emplace(found.kind, found.name).second) {
      skipToHead();
      return {};
    }
    found.lines = code_.ProcCountLines(found.name, found.kind);
    const std::int32_t start = code_.ProcStartLine(found.name, found.kind);
    line_ = std::max(line_, std::int64_t{std::min(start, line)} + found.lines);
    return found;
  }

 private:
  // No procedure that is not known begins in front of the next head. Its end is not looked for:
  // it may stand anywhere in a line.
  void skipToHead() {
    if (atEnd()) return;
    if (heads_.empty()) findHeads();
    line_ = *std::ranges::lower_bound(heads_, line_);
  }

  // Fetches the rest of the module in one piece; the last of the numbers lies behind it.
  void findHeads() {
    const auto first = static_cast<std::int32_t>(line_);
    const std::string rest = toAnsi(code_.Lines(first, last_ - first + 1));
    std::int64_t number = line_;
    for (const std::string_view line : Split(rest, '\n')) {
      if (mayBeHead(line)) heads_.push_back(number);
      ++number;
    }
    heads_.push_back(std::int64_t{last_} + 1);
  }

  const CodeModule& code_;
  std::int64_t line_;  // may lie behind every number that the host has
  std::int32_t last_;
  std::vector<std::int64_t> heads_;  // lines that may be heads, once they were needed
  std::set<std::pair<ProcedureKind, std::wstring>> known_;
};

std::optional<ComponentSummary> analyseComponent(const Component& component,
                                                 const std::function<bool()>& goOn) {
  ComponentSummary summary;
  summary.name = component.Name();
  summary.type = component.Type();
  const CodeModule code = component.CodeModule();
  summary.lines = code.CountOfLines();
  summary.declarationLines = code.CountOfDeclarationLines();
  for (ProcedureWalk walk(code, summary); !walk.atEnd();) {
    if (!goOn()) return {};
    if (auto procedure = walk.next()) summary.procedures.push_back(std::move(*procedure));
  }
  return summary;
}

}  // namespace

std::optional<ProjectSummary> analyseProject(Project& project, const std::function<bool()>& goOn) {
  ProjectSummary summary;
  summary.isProtected = project.isProtected();
  summary.document = documentTitle(project.BuildFileName());
  if (summary.isProtected) return summary;
  const Components& components = project.VBComponents();
  const std::int32_t count = components.Count();
  for (std::int32_t index = 1; index <= count; ++index) {
    if (!goOn()) return {};
    auto component = analyseComponent(components.Item(index), goOn);
    if (!component) return {};
    summary.components.push_back(std::move(*component));
  }
  return summary;
}

std::wstring_view kindPrefix(ProcedureKind kind) {
  switch (kind) {
    case ProcedureKind::Get:
      return L"Get ";
    case ProcedureKind::Let:
      return L"Let ";
    case ProcedureKind::Set:
      return L"Set ";
    case ProcedureKind::Procedure:
      break;
  }
  return {};
}

}  // namespace tintline
