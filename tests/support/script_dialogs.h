// A user who answers the program's questions from a list. A question that the list
// does not hold fails the test; so does an answer that nobody asked for.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "base/codepage.h"
#include "ports/dialogs.h"

namespace tintline::test {

class ScriptDialogs final : public Dialogs {
 public:
  using Folder = std::optional<std::filesystem::path>;
  using Text = std::optional<std::wstring>;
  using Color = std::optional<std::uint32_t>;

  ScriptDialogs() = default;
  ScriptDialogs(const ScriptDialogs&) = delete;
  ScriptDialogs& operator=(const ScriptDialogs&) = delete;
  ~ScriptDialogs() override { EXPECT_TRUE(answers_.empty()) << "an answer that nobody asked for"; }

  // The answers, in the order of the questions. A message is only to be expected.
  void answerOpen(FileChoice choice) { answers_.push_back({L"open", std::move(choice)}); }
  void answerSave(FileChoice choice) { answers_.push_back({L"save", std::move(choice)}); }
  void answerFolder(Folder folder) { answers_.push_back({L"folder", std::move(folder)}); }
  void expectMessage() { answers_.push_back({L"message", {}}); }
  void answerConfirm(bool yes) { answers_.push_back({L"confirm", yes}); }
  void answerInput(const Text& text) { answers_.push_back({L"input", text}); }
  void answerColor(Color color) { answers_.push_back({L"color", color}); }

  // Everything that was asked or told, in order: "asks (save): HTML speichern / a.htm".
  std::vector<std::wstring> asked;

  // Called in every dialog before it is answered: what happens while it is open.
  std::function<void()> onQuestion;

  FileChoice showOpen(const FileDialog& dialog) override { return file(L"open", dialog); }
  FileChoice showSave(const FileDialog& dialog) override { return file(L"save", dialog); }
  Folder chooseFolder(const std::wstring& title, const std::filesystem::path& start) override {
    return next(L"folder", Folder(), {title, pathText(start)});
  }
  Folder chooseFolderOrFile(const std::wstring& title,
                            const std::filesystem::path& start) override {
    return chooseFolder(title, start);
  }
  void message(const std::wstring& text, MessageIcon icon, const std::wstring& title) override {
    const wchar_t* const sign = icon == MessageIcon::None       ? L""
                                : icon == MessageIcon::Critical ? L" (!)"
                                                                : L" (i)";
    next(L"message", std::monostate(),
         {title.empty() ? text + sign : text + L" / " + title + sign});
  }
  bool confirm(const std::wstring& text) override { return next(L"confirm", false, {text}); }
  Text input(const std::wstring& prompt, const std::wstring& value) override {
    return next(L"input", Text(), {prompt, value});
  }
  Color chooseColor(std::uint32_t color) override {
    return next(L"color", Color(), {L"", std::to_wstring(color)});
  }

 private:
  FileChoice file(const std::wstring& kind, const FileDialog& dialog) {
    return next(kind, FileChoice{.error = FileChoice::kCancelled, .path = {}},
                {dialog.title, dialog.fileName, dialog.filter});
  }

  // The next answer; `otherwise`, and a failed test, when it is for another question.
  template <class T>
  T next(const std::wstring& kind, T otherwise, const std::vector<std::wstring>& texts) {
    std::wstring& question = asked.emplace_back(L"asks (" + kind + L"): " + texts.front());
    for (std::size_t i = 1; i < texts.size(); ++i)
      if (!texts[i].empty()) question += L" / " + texts[i];
    if (onQuestion) onQuestion();
    if (answers_.empty() || answers_.front().first != kind) {
      ADD_FAILURE() << toUtf8(asked.back());
      return otherwise;
    }
    const auto answer = std::move(answers_.front().second);
    answers_.pop_front();
    return std::get<T>(answer);
  }

  using Value = std::variant<std::monostate, FileChoice, bool, Text, Color, Folder>;
  std::deque<std::pair<std::wstring, Value>> answers_;
};

}  // namespace tintline::test
