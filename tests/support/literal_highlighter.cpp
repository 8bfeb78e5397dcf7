// Line highlighter, transcribed rule for rule. Nothing here is clever, on purpose.
// Tested by tests/unit/engine/engine_property_test.cpp
#include "tests/support/literal_highlighter.h"

#include <utility>

#include "tests/support/literal_text.h"

namespace tintline::literal {
namespace {

constexpr char kNul = '\0';
constexpr const char* kSpanEnd = "</span>";

bool endsInUnderscore(const std::string& text) { return Right(Trim(text), 1) == "_"; }

bool isProcedureKeyword(const std::string& word) {
  const std::string list =
      std::string("\x03") + "Sub" + "\x03" + "Function" + "\x03" + "Property" + "\x03";
  return InStr(list, "\x03" + word + "\x03") > 0;
}

bool isWholeLineComment(const std::string& line) {
  return Left(Trim(line), 1) == "'" || Left(UCase(Trim(line)), 3) == "REM";
}

std::string anchorName(const std::string& code, const std::string& word) {
  std::string name = Replace(code, word, "");
  name = Replace(name, "Private", "");
  name = Replace(name, "Declare", "");
  name = Replace(name, "Function ", "");
  name = Replace(name, "Sub ", "");
  name = Replace(name, "Public ", "");
  name = Replace(name, "Lib ", "");
  name = Replace(name, " ", "");
  if (InStr(name, "(") > 0) name = Left(name, InStr(name, "(") - 1);
  if (InStr(name, "\"") > 0) name = Left(name, InStr(name, "\"") - 1);
  return name;
}

std::string replaceFirst(const std::string& text, const std::string& find,
                         const std::string& with) {
  const std::size_t position = InStr(text, find);
  if (position == 0) return text;
  return Left(text, position - 1) + with + Mid(text, position + find.size());
}

// Wraps every `mark`, one after the other; the search goes on behind the mark just wrapped.
std::string wrapMarks(const std::string& text, const std::string& mark) {
  const std::string opening = "<span class='Marks'>";
  std::string result = text;
  std::size_t position = InStr(result, mark);
  while (position > 0) {
    result = Left(result, position - 1) + opening + mark + kSpanEnd + Mid(result, position + 1);
    position = InStr(position + opening.size() + 1, result, mark);
  }
  return result;
}

}  // namespace

std::string KeywordText(const std::vector<std::string>& entries) {
  std::string text;
  for (const std::string& entry : entries) text += kNul + entry;
  return text.empty() ? text : text + kNul;
}

bool fkt_NurBuchstaben(const std::string& text) {
  const std::string allowed = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz$";
  for (char c : text) {
    if (InStr(allowed, std::string(1, c)) == 0) return false;
  }
  return true;
}

bool fkt_KommentarZeichen(const std::string& line) {
  const std::size_t p = InStrRev(line, "'");
  if (p == 0) return false;
  return QuoteCount(Left(line, p - 1)) % 2 == 0;
}

bool fkt_KommentarRem(const std::string& line) {
  std::size_t p = InStr(UCase(line), " REM");
  while (p > 0) {
    if (QuoteCount(Left(line, p - 1)) % 2 == 0) return true;
    p = InStr(p + 1, UCase(line), " REM");
  }
  return false;
}

bool fkt_ProzedurEnde(const std::string& line) {
  const std::string text = Trim(line);
  return Left(text, 12) == "End Property" || Left(text, 7) == "End Sub" ||
         Left(text, 12) == "End Function";
}

Highlighter::Highlighter(KeywordLists lists) : lists_(std::move(lists)) {}

void Highlighter::FortsetzungPruefen(const std::string& text) {
  KommentarFortsetzung = endsInUnderscore(text);
}

std::string Highlighter::fkt_ZeileKonvertieren(const std::string& line) {
  KommentarOffen = false;

  if (KommentarFortsetzung) {
    KommentarOffen = true;
    KommentarFortsetzung = endsInUnderscore(line);
    return "<span class='Rem'>" + line + kSpanEnd;
  }

  if (isWholeLineComment(line)) {
    FortsetzungPruefen(line);
    return "<span class='Rem'>" + line + kSpanEnd;
  }

  std::size_t p = 0;
  if (fkt_KommentarZeichen(line)) {
    p = InStrRev(line, "'");
  } else if (fkt_KommentarRem(line)) {
    p = InStrRevText(line, " REM");
  }
  std::string code = line;
  std::string comment;
  if (p > 0) {
    FortsetzungPruefen(line);
    comment = Mid(line, p);
    code = Left(line, p - 1);
    KommentarOffen = true;
  }

  std::string result = highlightCode(code);
  if (KommentarOffen) {
    result += "<span class='Rem'>" + comment + kSpanEnd;
    KommentarOffen = false;
  }
  return result;
}

std::string Highlighter::highlightCode(const std::string& code) {
  std::string result;
  for (const std::string& word : Split(code, " ")) {
    if (isProcedureKeyword(word) && !fkt_ProzedurEnde(code)) {
      return "<span name='" + anchorName(code, word) + "' class='Sub'>" + code + kSpanEnd;
    }
    if (fkt_ProzedurEnde(code)) {
      return "<span class='EndSub'>" + code + kSpanEnd;
    }
    result += highlightWord(word);
  }
  return result;
}

std::string Highlighter::highlightWord(const std::string& text) {
  std::string result;
  Word word;
  word.piece = text;
  word.rest = text;
  if (Trim(text).empty()) WortEnde = false;
  do {
    word.isKeyword1 = false;
    word.isKeyword2 = false;
    word.namedArgument = false;
    word.trim = false;
    splitAtComma(word);
    splitAtOpeningParenthesis(word);
    splitAtClosingParenthesis(word);
    splitAtNamedArgument(word);
    lookUp(word);
    word.piece = replaceFirst(word.piece, "<", "&lt;");
    word.piece = replaceFirst(word.piece, ">", "&gt;");
    word.piece = wrapMarks(word.piece, "\"");
    word.piece = wrapMarks(word.piece, "(");
    word.piece = wrapMarks(word.piece, ")");
    if (word.trim) word.piece = Trim(word.piece);
    result += output(word);
    if (word.piece.empty() && !word.rest.empty()) {
      word.piece = word.rest;
      word.rest = "";
    } else if (!word.piece.empty() && !word.rest.empty()) {
      word.piece = word.rest;
    } else {
      word.piece = "";
    }
  } while (!word.piece.empty());
  return result;
}

void Highlighter::splitAtComma(Word& word) {
  const std::size_t comma = InStr(word.piece, ",");
  if (Trim(word.piece).size() > 1 && comma >= 2) {
    word.rest = Mid(word.piece, comma);
    word.piece = Left(word.piece, comma - 1);
    if (word.rest == ",") word.trim = true;
    WortEnde = false;
  } else {
    word.rest = "";
    WortEnde = true;
  }
}

void Highlighter::splitAtOpeningParenthesis(Word& word) {
  if (InStr(word.piece, "()") > 0) return;
  const std::size_t position = InStr(word.piece, "(");
  if (position >= 2) {
    word.rest = Mid(word.piece, position) + word.rest;
    word.piece = Left(word.piece, position - 1);
    word.trim = true;
    WortEnde = false;
  }
  if (position == 1) {
    word.rest = Mid(word.piece, 2) + word.rest;
    word.piece = "(";
    word.trim = true;
    WortEnde = false;
  }
}

void Highlighter::splitAtClosingParenthesis(Word& word) {
  if (InStr(word.piece, "()") > 0) return;
  const std::size_t position = InStr(word.piece, ")");
  if (position == 0) return;
  if (position >= 2) {
    word.rest = Mid(word.piece, position) + word.rest;
    word.piece = Left(word.piece, position - 1);
  } else {
    word.rest = Mid(word.piece, 2) + word.rest;
    word.piece = ")";
  }
  word.trim = true;
  WortEnde = word.piece == ")" && word.rest.empty();
}

void Highlighter::splitAtNamedArgument(Word& word) {
  if (Left(word.piece, 2) == ":=") {
    word.piece = Mid(word.piece, 3);
    word.namedArgument = true;
  }
  const std::size_t position = InStr(word.piece, ":=");
  if (position >= 2) {
    word.rest = Mid(word.piece, position) + word.rest;
    word.piece = Left(word.piece, position - 1);
    WortEnde = false;
  }
}

void Highlighter::lookUp(Word& word) const {
  const std::string looked = Trim(word.piece);
  if (!fkt_NurBuchstaben(looked) || looked.empty()) return;
  if (InStr(lists_.Keywords1, kNul + looked + kNul) > 0) {
    word.isKeyword1 = true;
  } else if (InStr(lists_.Keywords2, kNul + looked + kNul) > 0) {
    word.isKeyword2 = true;
  }
}

std::string Highlighter::output(const Word& word) const {
  std::string result;
  if (word.namedArgument) result += "<span class='Parms'>:=</span>";
  if (word.isKeyword1) {
    result += "<span class='Code'>" + word.piece + kSpanEnd;
  } else if (word.isKeyword2) {
    result += "<span class='Parms'>" + word.piece + kSpanEnd;
  } else {
    result += word.piece;
  }
  const bool loneBlank = word.piece == " " && !word.trim;
  if (WortEnde && !loneBlank) result += " ";
  return result;
}

}  // namespace tintline::literal
