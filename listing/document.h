// Exact listings of one or more modules, in each format.
//
//     Targets targets(options, Place::OwnPages);
//     targets.add(module, u8"Modul1.htm");
//     const DocumentMaker maker(Format::Page, options, Place::OwnPages);
//     auto document = maker.make(file, targets, u8"Modul1.bas");
//     document->add({module, project.resolve(module, 0), 0});
//     document->close();
//
// All text is UTF-8 with LF as line end (RTF: ASCII).
//
// Tested by tests/golden/exact, tests/unit/any_text_property_test.cpp and
// tests/browser/run.py.
#pragma once

#include <cstdint>
#include <memory>
#include <ostream>
#include <span>
#include <string>
#include <string_view>

#include "listing/options.h"
#include "listing/output.h"
#include "listing/targets.h"
#include "vb/module.h"
#include "vb/project.h"

namespace tintline::listing {

enum class Format : std::uint8_t {
  Page,   // a whole HTML document, with index; Style::Inline: without
  Body,   // what stands in its <main>, to be put into another page; Style::Inline: <pre>
  Lines,  // the HTML of each source line, closed by LF
  Rtf,
  Markdown,  // index and fenced block
  Json       // what is known of the code: one object a module, one line each
};

// A module, and what its names mean.
struct Source {
  const vb::Module& module;
  std::span<const vb::Reference> references;  // in the order of their tokens; empty: no links
  std::uint32_t index;                        // of the module in the project and its Targets
};

// What a page shows around the code of its module, and never has copied with it.
class Companion {
 public:
  virtual ~Companion() = default;
  // Rules of CSS.
  virtual std::string style() const = 0;
  // Stands at the end of the page's header.
  virtual void writeHeader(Output& out) const = 0;
  // Stands between the head of a procedure, a declaration of the module, and its body.
  virtual void writeBelowHead(Output& out, std::uint32_t procedure) const = 0;
};

class Document {
 public:
  virtual ~Document() = default;

  // Writes the next module. In a page of several they come in the order of their indices.
  virtual void add(const Source& source) = 0;

  // Writes the rest. Whether the stream took all shows in its state.
  virtual void close() = 0;
};

struct HtmlLook;

// Makes documents of one form. What is the same in all of them, as the style sheet, it makes once.
class DocumentMaker {
 public:
  // The options must live as long as the maker; which lines they choose may change meanwhile.
  DocumentMaker(Format format, const Options& options, Place place);
  ~DocumentMaker();

  // `title` is what a browser shows as the name of the page. `targets` are of the maker's place.
  // They, `out` and the maker must live as long as the document, likewise `companion`, which only
  // a page of one module has. May be called by several threads.
  std::unique_ptr<Document> make(std::ostream& out, const Targets& targets,
                                 std::u8string_view title,
                                 const Companion* companion = nullptr) const;

  Format format() const { return format_; }
  const Options& options() const { return options_; }
  Place place() const { return place_; }

 private:
  const Format format_;
  const Options& options_;
  const Place place_;
  std::unique_ptr<const HtmlLook> look_;  // of HTML
};

}  // namespace tintline::listing
