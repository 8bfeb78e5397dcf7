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
  // Something that the program asked or told.
  struct Question {
    enum class Kind { Open, Save, Folder, Message, Confirm, Input, ChooseColor };
    Kind kind;
    std::wstring text;   // the message, the question, the prompt; a file dialog's title
    std::wstring value;  // what it offered: file name, folder, input value
    std::wstring title;  // a message's title
    std::wstring filter = {};
    MessageIcon icon = MessageIcon::None;
    std::uint32_t color = 0;  // the colour it offered
  };

  ScriptDialogs() = default;
  ScriptDialogs(const ScriptDialogs&) = delete;
  ScriptDialogs& operator=(const ScriptDialogs&) = delete;
  ~ScriptDialogs() override { EXPECT_TRUE(answers_.empty()) << "an answer that nobody asked for"; }

  // The answers, in the order of the questions. A message is only to be expected.
  void answerOpen(FileChoice choice) { add(Kind::Open, std::move(choice)); }
  void answerSave(FileChoice choice) { add(Kind::Save, std::move(choice)); }
  void answerFolder(std::optional<std::filesystem::path> folder) {
    add(Kind::Folder, std::move(folder));
  }
  void expectMessage() { add(Kind::Message, {}); }
  void answerConfirm(bool yes) { add(Kind::Confirm, yes); }
  void answerInput(const std::optional<std::wstring>& text) { add(Kind::Input, text); }
  void answerColor(std::optional<std::uint32_t> color) { add(Kind::ChooseColor, color); }

  // Everything that was asked, in order.
  std::vector<Question> asked;

  // Called in every dialog before it is answered: what happens while it is open.
  std::function<void()> onQuestion;

  FileChoice showOpen(const FileDialog& dialog) override {
    return next<FileChoice>(fileQuestion(Kind::Open, dialog)).value_or(cancelled());
  }

  FileChoice showSave(const FileDialog& dialog) override {
    return next<FileChoice>(fileQuestion(Kind::Save, dialog)).value_or(cancelled());
  }

  std::optional<std::filesystem::path> chooseFolder(
      const std::wstring& title, const std::filesystem::path& startFolder) override {
    return next<std::optional<std::filesystem::path>>(
               {.kind = Kind::Folder, .text = title, .value = pathText(startFolder), .title = {}})
        .value_or(std::nullopt);
  }

  void message(const std::wstring& text, MessageIcon icon, const std::wstring& title) override {
    next<std::monostate>(
        {.kind = Kind::Message, .text = text, .value = {}, .title = title, .icon = icon});
  }

  bool confirm(const std::wstring& text) override {
    return next<bool>({.kind = Kind::Confirm, .text = text, .value = {}, .title = {}})
        .value_or(false);
  }

  std::optional<std::wstring> input(const std::wstring& prompt,
                                    const std::wstring& value) override {
    return next<std::optional<std::wstring>>(
               {.kind = Kind::Input, .text = prompt, .value = value, .title = {}})
        .value_or(std::nullopt);
  }

  std::optional<std::uint32_t> chooseColor(std::uint32_t color) override {
    return next<std::optional<std::uint32_t>>(
               {.kind = Kind::ChooseColor, .text = {}, .value = {}, .title = {}, .color = color})
        .value_or(std::nullopt);
  }

 private:
  using Kind = Question::Kind;
  using Value = std::variant<std::monostate, FileChoice, bool, std::optional<std::wstring>,
                             std::optional<std::uint32_t>, std::optional<std::filesystem::path>>;
  struct Answer {
    Kind kind;
    Value value;
  };

  static FileChoice cancelled() { return {.error = FileChoice::kCancelled, .path = {}}; }

  static Question fileQuestion(Kind kind, const FileDialog& dialog) {
    return {.kind = kind,
            .text = dialog.title,
            .value = dialog.fileName,
            .title = {},
            .filter = dialog.filter};
  }

  void add(Kind kind, Value value) { answers_.push_back({kind, std::move(value)}); }

  // The next answer; nothing, and a failed test, when it is for another question.
  template <class T>
  std::optional<T> next(Question question) {
    asked.push_back(question);
    if (onQuestion) onQuestion();
    if (answers_.empty() || answers_.front().kind != question.kind) {
      ADD_FAILURE() << "asked unexpectedly: " << toUtf8(question.text);
      return std::nullopt;
    }
    const Value value = std::move(answers_.front().value);
    answers_.pop_front();
    return std::get<T>(value);
  }

  std::deque<Answer> answers_;
};

}  // namespace tintline::test
