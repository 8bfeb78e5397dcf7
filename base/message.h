// What the program tells its user, worded in each language that he may have.
//
//     inline constexpr Text<2> kUnwritable{L"cannot write {1}: {2}",
//                                          L"{1} kann nicht geschrieben werden: {2}"};
//     throw JobError(kUnwritable(pathText(path), reasonText(reason)));
//
// A failure travels as a Message, and whoever shows it picks the language.
//
// Tested by tests/unit/base/message_test.cpp.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace tintline {

enum class Language : std::uint8_t { English, German };

// The same in each language, and for programs.
struct Message {
  std::wstring english{};
  std::wstring german{};
  std::string_view code{};  // what it is about: it stays when the words change
  std::size_t line = 0;     // of the source, from 1; 0: none

  bool empty() const { return english.empty(); }
  const std::wstring& in(Language language) const {
    return language == Language::German ? german : english;
  }
};

// The message with the line that it is about.
inline Message atLine(std::size_t line, Message message) {
  message.line = line;
  return message;
}

// A text from outside, as the name of a file, so that it does no harm where it is shown: control
// characters, and those that turn the direction of writing, become "\n", "\x1B", "\u202E".
std::wstring harmless(std::wstring_view text);

// What can stand in a text: something from outside, which is made harmless, a number, or what is
// worded itself.
inline Message valueOf(std::wstring_view text) { return {harmless(text), harmless(text)}; }
inline Message valueOf(std::size_t number) {
  return {std::to_wstring(number), std::to_wstring(number)};
}
inline Message valueOf(const Message& message) { return message; }

namespace detail {

// Whether it holds each of {1} to {values}, and no brace besides.
constexpr bool holdsValues(std::wstring_view text, std::size_t values) {
  std::size_t found = 0, braces = 0;
  for (const wchar_t character : text) braces += character == L'{' || character == L'}';
  for (std::size_t i = 0; i < values; ++i) {
    const wchar_t place[] = {L'{', static_cast<wchar_t>(L'1' + i), L'}'};
    found += text.find(std::wstring_view(place, 3)) != std::wstring_view::npos;
  }
  return found == values && braces == 2 * values;
}

// The text with values for {1}, {2} …
std::wstring filled(std::wstring_view text, std::span<const Message> values, Language language);

}  // namespace detail

// A text of the program in each language, in which {1} to {Values} stand for something.
template <std::size_t Values>
class Text {
 public:
  consteval Text(const wchar_t* english, const wchar_t* german) : Text("", english, german) {}
  consteval Text(const char* code, const wchar_t* english, const wchar_t* german)
      : code_(code), english_(english), german_(german) {
    if (!detail::holdsValues(english, Values) || !detail::holdsValues(german, Values))
      throw "each of {1} to {Values} stands once in each language";  // a compile error
  }
  constexpr Text() requires(Values == 0) = default;

  template <class... Value>
  requires(sizeof...(Value) == Values) Message operator()(const Value&... values) const {
    const std::array<Message, Values> all{valueOf(values)...};
    std::string_view code = code_;
    for (const Message& value : all)
      if (code.empty()) code = value.code;
    return {detail::filled(english_, all, Language::English),
            detail::filled(german_, all, Language::German), code};
  }

  constexpr std::wstring_view in(Language language) const requires(Values == 0) {
    return language == Language::German ? german_ : english_;
  }

 private:
  std::string_view code_;
  std::wstring_view english_;
  std::wstring_view german_;
};

}  // namespace tintline
