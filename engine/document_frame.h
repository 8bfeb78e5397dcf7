// What surrounds the highlighted lines: head with style sheet, foot, procedure
// index; and the line filters of the inline style mode.
//
// Tested by tests/golden/run.py.
#pragma once

#include <array>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "engine/color_scheme.h"

namespace tintline {

enum class StyleMode {
  Class,  // optClass, "CSS zentral def.": a style sheet in the head
  Inline  // optStyle, "CSS im Style def.": a style attribute on every element
};

// Names of procedure heads in file order, each one blank followed by the name.
using ProcedureNames = std::vector<std::string>;

class DocumentFrame {
 public:
  // `charset` is told in the head of a page, when it is not empty.
  DocumentFrame(ColorScheme colors, StyleMode mode, std::string charset = {});

  StyleMode mode() const { return mode_; }

  // Each of these writes whole lines, closed by CR LF.
  void HTMLKopf(std::ostream& datei) const;
  void HTMLFuss(std::ostream& datei) const;
  void Procuebersicht(std::ostream& datei, const ProcedureNames& ProzNamen) const;

  // The line with every class attribute turned into a style attribute.
  std::string fkt_ReplaceStyle(std::string_view line) const;

  // The line with the background of the reserved words made "inherit".
  std::string fkt_ReplaceTransparent(std::string_view line) const;

 private:
  struct Replacement {
    std::string_view classAttribute;
    std::string styleAttribute;
  };

  void addStyleSheet(std::string& head) const;
  std::string styleAttribute(std::size_t category, bool boldItalic) const;

  ColorScheme colors_;
  StyleMode mode_;
  std::string charset_;
  std::array<Replacement, 6> replacements_;
};

}  // namespace tintline
