// See module_file_reader.h. Tested by tests/unit/sources/sources_test.cpp.
#include "sources/module_file_reader.h"

#include <algorithm>

#include "base/block.h"
#include "base/codepage.h"
#include "base/text.h"

namespace tintline {
namespace {

// The text of a file without its byte-order mark: the file's own bytes, or
// `converted` when it is UTF-16.
std::string_view ansiText(std::string_view file, std::string& converted, std::size_t& replaced) {
  constexpr std::string_view kUtf8 = "\xEF\xBB\xBF";
  constexpr std::string_view kUtf16LittleEndian = "\xFF\xFE";
  constexpr std::string_view kUtf16BigEndian = "\xFE\xFF";
  if (file.starts_with(kUtf16LittleEndian))
    return converted = utf16ToAnsi(file.substr(2), ByteOrder::LittleEndian, &replaced);
  if (file.starts_with(kUtf16BigEndian))
    return converted = utf16ToAnsi(file.substr(2), ByteOrder::BigEndian, &replaced);
  return file.starts_with(kUtf8) ? file.substr(kUtf8.size()) : file;
}

// Takes the first line and its line end off the front of the text.
std::string_view takeLine(std::string_view& text, char lineEnd) {
  const std::size_t end = std::min(text.find(lineEnd), text.size());
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  if (lineEnd == '\r' && text.starts_with('\n')) text.remove_prefix(1);
  return line;
}

// Words that are no part of the name in a head; each goes with the blank behind it.
constexpr std::string_view kHeadWords[] = {"Private ", "Public ", "Declare ", "Function ", "Sub "};

// The length of the head word that the word ends in, 0 for none.
std::size_t headWordAtEnd(std::string_view word) {
  if (!word.ends_with(' ')) return 0;
  for (const std::string_view known : kHeadWords)
    if (word.size() >= known.size() &&
        equalsIgnoreCase(word.substr(word.size() - known.size()), known))
      return known.size();
  return 0;
}

// Takes the head words out one after the other, then all blanks.
std::string eraseHeadWords(std::string_view head) {
  std::string name(head);
  for (const std::string_view word : kHeadWords) eraseAll(name, CaselessText(word));
  eraseAll(name, " ");
  return name;
}

// The name in a procedure head, one blank in front: what stands before the "("
// when the known words and all blanks are taken out. Other words stay: "Friend
// Sub X()" gives "FriendX". Kept on purpose. Known words stand alone nearly always:
// then one pass gives what taking them out one after the other does.
std::string procedureName(std::string_view head) {
  head = head.substr(0, head.find('('));
  std::string name;
  name.reserve(head.size() + 1);
  name.push_back(' ');
  for (std::string_view rest = head; !rest.empty();) {
    const std::string_view word = takeWord(rest);
    const std::size_t known = headWordAtEnd(word);
    if (known == 0) {
      name.append(RTrim(word));
    } else if (known != word.size()) {
      // What is in front of it joins what follows, and both may be a head word then.
      return " " + eraseHeadWords(head);
    }
  }
  return name;
}

constexpr CaselessText kSub("Sub "), kFunction("Function "), kDeclare("Declare"), kEnd("End ");
constexpr CaselessText kQuotedSub("\"Sub"), kQuotedFunction("\"Function");

// Whether the line holds "End "; the tail of "Friend " is none.
bool hasEnd(std::string_view line) {
  constexpr std::string_view kFriend = "Fri";
  for (std::size_t at = 0; (at = kEnd.findIn(line, at)) != std::string_view::npos; ++at)
    if (at < kFriend.size() ||
        !equalsIgnoreCase(line.substr(at - kFriend.size(), kFriend.size()), kFriend))
      return true;
  return false;
}

// Tells of the lines of a text, given in order, whether they can be heads: "Sub " or "Func" is in
// them, in any case. The text is searched once, sixteen places at a time.
class HeadSearch {
 public:
  explicit HeadSearch(std::string_view text) : text_(text), at_(next(0)) {}

  bool isIn(std::string_view line) {
    const auto begin = static_cast<std::size_t>(line.data() - text_.data());
    if (at_ < begin) at_ = next(begin);
    return at_ < begin + line.size();
  }

 private:
  // Where "ub " or "unc" stands next; what is too near the end to be looked at may be one.
  std::size_t next(std::size_t from) const {
    for (; from + sizeof(Block) + 2 <= text_.size(); from += sizeof(Block)) {
      const Block first = loadBlock(text_.data() + from) | 0x20;
      const Block second = loadBlock(text_.data() + from + 1) | 0x20;
      const Block third = loadBlock(text_.data() + from + 2) | 0x20;
      const std::size_t found = firstMarked((first == 'u') & (((second == 'b') & (third == ' ')) |
                                                              ((second == 'n') & (third == 'c'))));
      if (found != sizeof(Block)) return from + found;
    }
    return from;
  }

  std::string_view text_;
  std::size_t at_;
};

}  // namespace

ModuleSource ModulDateiLesen(std::string_view file, const LineProgress& progress) {
  std::string converted;
  ModuleSource source;
  std::string_view text = ansiText(file, converted, source.replaced);
  const char lineEnd = text.find('\r') == std::string_view::npos ? '\n' : '\r';
  source.List1.reserveBytes(text.size());  // enough where lines end in CR LF
  HeadSearch heads(text);
  while (!text.empty()) {
    source.tooManyLines = source.List1.size() == kMaxLines;
    if (source.tooManyLines) break;
    const std::string_view line = takeLine(text, lineEnd);
    if (heads.isIn(line)) collectProcedureName(line, source.ProzNamen);
    source.List1.append(line, " ");
    if (progress) progress(source.List1.size());
  }
  return source;
}

std::string decodeModuleText(std::string_view file, std::size_t* replaced) {
  std::string converted;
  std::size_t none = 0;
  return std::string(ansiText(file, converted, replaced != nullptr ? *replaced : none));
}

bool fkt_IstProzedurZeile(std::string_view line) {
  const auto has = [line](char c) { return line.find(c) != std::string_view::npos; };
  return has('(') && (kSub.isIn(line) || kFunction.isIn(line)) && !hasEnd(line) &&
         !kDeclare.isIn(line) &&
         !(has('"') && (kQuotedSub.isIn(line) || kQuotedFunction.isIn(line)));
}

void collectProcedureName(std::string_view line, ProcedureNames& ProzNamen) {
  if (fkt_IstProzedurZeile(line)) ProzNamen.push_back(procedureName(line));
}

}  // namespace tintline
