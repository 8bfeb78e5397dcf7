// Whole projects documented: "Projekt dokumentieren…". Tested by tests/app/search_test.cpp.
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "app/application.h"
#include "app/frmVBACode/frmVBACode.h"
#include "base/codepage.h"
#include "convert/exact.h"
#include "runs/project_run.h"

namespace tintline {
namespace {

constexpr std::wstring_view kFolderEnd = L"-Dokumentation";

// What is documented, without the end of a file's name.
std::wstring nameOf(const std::filesystem::path& source) {
  std::error_code none;
  return pathText(std::filesystem::is_directory(source, none) ? source.filename() : source.stem());
}

// Nothing that is read may be written.
Message clashOf(const ProjectInputs& inputs, const ProjectOrder& order) {
  std::vector<Task> plan;
  for (const Task& task : inputs.tasks) plan.push_back({task.input, pageOf(task, order)});
  return overwritten(plan, {});
}

}  // namespace

// Shows how far a run is and lets the user's events in. The run has no threads of its own.
class frmVBACode::ProjectProgress final : public ProjectObserver {
 public:
  ProjectProgress(frmVBACode& form, const ProjectInputs& inputs) : form_(form), inputs_(inputs) {}

  bool goesOn() override {
    form_.ports_.messageLoop.yield();
    aborted_ = aborted_ || form_.bEsc_;
    return !aborted_;
  }
  void read() override { show(L"Lese Modul ", ++read_); }
  void finished(std::size_t input, Outcome outcome) override {
    show(L"Bearbeite Modul ", ++finished_);
    if (outcome.failure.empty()) {
      ++documented_;
      return;
    }
    failures_.push_back(inputName(inputs_.tasks[input]).german + L": " + outcome.failure.german);
  }
  void unwritten(const Message& failure) override { failures_.push_back(failure.german); }
  void stale(const std::filesystem::path&) override {}  // its folder is of no other use

  bool aborted() const { return aborted_; }
  std::size_t documented() const { return documented_; }

  // For the user; "" when there are none.
  std::wstring failures() const {
    constexpr std::size_t kMost = 10;
    std::wstring text;
    for (std::size_t i = 0; i < failures_.size() && i < kMost; ++i) text += failures_[i] + L"\r\n";
    if (failures_.size() > kMost)
      text += L"und " + std::to_wstring(failures_.size() - kMost) + L" weitere";
    return text;
  }

 private:
  void show(std::wstring_view what, std::size_t count) {
    const std::size_t all = inputs_.tasks.size();
    form_.Label9.Caption =
        std::wstring(what) + std::to_wstring(count) + L" (" + std::to_wstring(all) + L")";
    form_.showProgress(read_ + finished_, 2 * all, 1);  // each is read, then written
  }

  frmVBACode& form_;
  const ProjectInputs& inputs_;
  std::size_t read_ = 0, finished_ = 0, documented_ = 0;
  std::vector<std::wstring> failures_;
  bool aborted_ = false;
};

void frmVBACode::ProjektDokumentieren() {
  const auto source = ports_.dialogs.chooseFolderOrFile(
      L"Ordner, Projektdatei (.vbp) oder Office-Datei, die dokumentiert werden soll:",
      Dateipfad_.parent_path());
  if (!source) return;
  const std::wstring folder = nameOf(*source).append(kFolderEnd);
  const auto place = ports_.dialogs.chooseFolder(
      L"In diesem Ordner entsteht der Ordner \"" + folder + L"\":", source->parent_path());
  if (!place) return;
  MousePointer = Pointer::Hourglass;
  document(*source, *place / pathFromText(folder));
  MousePointer = Pointer::Default;
}

void frmVBACode::document(const std::filesystem::path& source,
                          const std::filesystem::path& folder) {
  Label9.Caption = L"Suche Module...";
  Label10.Caption = L"";
  ProjectInputs inputs;
  const bool searched = watched([&](const Progress& progress) {
    inputs = findProjects(
        {.paths = {source}, .results = folder, .watch = [&progress] { progress(0, 0); }});
  });
  if (!searched) return tellAborted();
  ProjectOrder order{.folder = folder, .reading = {.words = exactWords_}};
  order.listing.colors = exactColors(application_.colors);
  if (const Message clash = clashOf(inputs, order); !clash.empty())
    return ports_.dialogs.message(clash.german, MessageIcon::Critical, {});
  ProjectProgress progress(*this, inputs);
  if (!inputs.projects.empty())
    documentProjects(inputs, order, progress);
  else
    for (std::size_t i = 0; i < inputs.tasks.size(); ++i)
      progress.finished(i, {.failure = inputs.tasks[i].input.failure});
  if (progress.aborted()) return tellAborted();
  if (const std::wstring failures = progress.failures(); !failures.empty())
    ports_.dialogs.message(failures, MessageIcon::Critical, L"Projekt dokumentieren");
  if (inputs.projects.empty()) return tellStatus(L"Nichts zu dokumentieren");
  tellStatus(std::to_wstring(progress.documented()) +
             (progress.documented() == 1 ? L" Modul" : L" Module") + L" dokumentiert");
  const std::filesystem::path index = resultsOf(order).front();
  showExportPath(pathText(index));
  openFile(index);
}

}  // namespace tintline
