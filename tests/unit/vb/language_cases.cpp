#include "tests/unit/vb/language_cases.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace tintline::vb {
namespace {

constexpr std::u8string_view kOpen = u8"‹", kClose = u8"›", kTitle = u8"### ", kSection = u8"--- ";

// In the order of TokenKind.
constexpr std::u8string_view kKinds[] = {
    u8"",   u8"",  u8"",  u8"k",  u8"kt", u8"kc", u8"ow", u8"nb", u8"no", u8"nf", u8"nc",  u8"nl",
    u8"na", u8"n", u8"s", u8"ld", u8"m",  u8"c",  u8"cp", u8"h",  u8"o",  u8"p",  u8"err", u8""};

std::u8string contentOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void readCases(const std::filesystem::path& path, std::vector<LanguageCase>& cases) {
  const std::u8string content = contentOf(path);
  const std::size_t before = cases.size();
  for (std::size_t begin = 0, end; begin < content.size(); begin = end) {
    end = std::min(content.find(u8'\n', begin), content.size() - 1) + 1;
    const std::u8string line = content.substr(begin, end - begin);
    const std::u8string_view bare = std::u8string_view(line).substr(0, line.size() - 1);
    if (line.starts_with(kTitle))
      cases.push_back({path.filename().string(),
                       std::u8string(bare.substr(kTitle.size())),
                       {{u8"module Module", {}}}});
    else if (cases.size() == before)
      continue;
    else if (line.starts_with(kSection))
      cases.back().sections.push_back({std::u8string(bare.substr(kSection.size())), {}});
    else
      cases.back().sections.back().text += line;
  }
}

}  // namespace

const std::u8string* LanguageCase::section(std::u8string_view name) const {
  const auto found = std::ranges::find(sections, name, &Section::name);
  return found == sections.end() ? nullptr : &found->text;
}

std::vector<LanguageCase> languageCases(const std::string& folder) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder))
    if (entry.path().extension() == ".txt") files.push_back(entry.path());
  std::ranges::sort(files);
  std::vector<LanguageCase> cases;
  for (const auto& file : files) readCases(file, cases);
  return cases;
}

void expectLines(std::u8string_view is, std::u8string_view should, const LanguageCase& where) {
  const auto takeLine = [](std::u8string_view& text) {
    const std::u8string_view line = text.substr(0, text.find(u8'\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    return std::string(line.begin(), line.end());
  };
  while (!is.empty() || !should.empty()) {
    const std::string line = takeLine(is), expected = takeLine(should);
    if (line != expected)
      ADD_FAILURE() << where.file << ", " << std::string(where.title.begin(), where.title.end())
                    << "\n  is     " << line << "\n  should " << expected;
  }
}

std::u8string withoutMarks(std::u8string_view marked) {
  std::u8string text;
  for (std::size_t at = 0, open; at < marked.size();) {
    open = std::min(marked.find(kOpen, at), marked.size());
    text += marked.substr(at, open - at);
    const std::size_t close = marked.find(kClose, open);
    at = close == std::u8string_view::npos ? marked.size() : close + kClose.size();
  }
  return text;
}

std::u8string withMarks(std::u8string_view text, const Tokens& tokens, bool all) {
  std::u8string marked;
  for (std::size_t i = 0; i + 1 < tokens.size(); ++i) {
    marked += text.substr(tokens[i].begin - tokens[i].gap, tokens[i].gap);
    const TokenKind kind = tokens[i].kind;
    const std::u8string_view mark = kKinds[static_cast<std::size_t>(kind)];
    const bool plain =
        kind == TokenKind::Name || kind == TokenKind::Operator || kind == TokenKind::Punctuation;
    if (!mark.empty() && (all || !plain)) marked.append(kOpen).append(mark).append(kClose);
    marked += textOf(text, tokens, i);
  }
  return marked.append(text.substr(tokens.back().begin - tokens.back().gap));
}

WordLists wordLists(const LanguageCase& languageCase) {
  const std::u8string* const first = languageCase.section(u8"first");
  const std::u8string* const second = languageCase.section(u8"second");
  if (first == nullptr && second == nullptr) return {};
  const std::u8string none;
  return {first != nullptr ? *first : none, second != nullptr ? *second : none};
}

}  // namespace tintline::vb
