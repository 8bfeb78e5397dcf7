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

  // Something that the program asked or told.
  struct Question {
    enum class Kind { Open, Save, Folder, Message, Confirm, Input, ChooseColor };
    Kind kind;
    std::wstring text;        // the message, the question, the prompt; a file dialog's title
    std::wstring value = {};  // what it offered: file name, folder, input, colour
    std::wstring title = {};  // a message's title
    std::wstring filter = {};
    MessageIcon icon = MessageIcon::None;
  };
  using Kind = Question::Kind;

  ScriptDialogs() = default;
  ScriptDialogs(const ScriptDialogs&) = delete;
  ScriptDialogs& operator=(const ScriptDialogs&) = delete;
  ~ScriptDialogs() override { EXPECT_TRUE(answers_.empty()) << "an answer that nobody asked for"; }

  // The answers, in the order of the questions. A message is only to be expected.
  void answerOpen(FileChoice choice) { answers_.push_back({Kind::Open, std::move(choice)}); }
  void answerSave(FileChoice choice) { answers_.push_back({Kind::Save, std::move(choice)}); }
  void answerFolder(Folder folder) { answers_.push_back({Kind::Folder, std::move(folder)}); }
  void expectMessage() { answers_.push_back({Kind::Message, {}}); }
  void answerConfirm(bool yes) { answers_.push_back({Kind::Confirm, yes}); }
  void answerInput(const Text& text) { answers_.push_back({Kind::Input, text}); }
  void answerColor(Color color) { answers_.push_back({Kind::ChooseColor, color}); }

  // Everything that was asked, in order.
  std::vector<Question> asked;

  // Called in every dialog before it is answered: what happens while it is open.
  std::function<void()> onQuestion;

  FileChoice showOpen(const FileDialog& dialog) override { return file(Kind::Open, dialog); }
  FileChoice showSave(const FileDialog& dialog) override { return file(Kind::Save, dialog); }
  Folder chooseFolder(const std::wstring& title, const std::filesystem::path& start) override {
    return next(Folder(), {.kind = Kind::Folder, .text = title, .value = pathText(start)});
  }
  void message(const std::wstring& text, MessageIcon icon, const std::wstring& title) override {
    next(std::monostate(), {.kind = Kind::Message, .text = text, .title = title, .icon = icon});
  }
  bool confirm(const std::wstring& text) override {
    return next(false, {.kind = Kind::Confirm, .text = text});
  }
  Text input(const std::wstring& prompt, const std::wstring& value) override {
    return next(Text(), {.kind = Kind::Input, .text = prompt, .value = value});
  }
  Color chooseColor(std::uint32_t color) override {
    return next(Color(), {.kind = Kind::ChooseColor, .text = {}, .value = std::to_wstring(color)});
  }

 private:
  FileChoice file(Kind kind, const FileDialog& dialog) {
    return next(
        FileChoice{.error = FileChoice::kCancelled, .path = {}},
        {.kind = kind, .text = dialog.title, .value = dialog.fileName, .filter = dialog.filter});
  }

  // The next answer; `otherwise`, and a failed test, when it is for another question.
  template <class T>
  T next(T otherwise, Question question) {
    asked.push_back(question);
    if (onQuestion) onQuestion();
    if (answers_.empty() || answers_.front().first != question.kind) {
      ADD_FAILURE() << "asked unexpectedly: " << toUtf8(question.text);
      return otherwise;
    }
    const auto answer = std::move(answers_.front().second);
    answers_.pop_front();
    return std::get<T>(answer);
  }

  using Value = std::variant<std::monostate, FileChoice, bool, Text, Color, Folder>;
  std::deque<std::pair<Kind, Value>> answers_;
};

}  // namespace tintline::test
