// What is known of modules as JSON (RFC 8259): one object a module, each in a line of its own.
//
//     name, kind     of the module
//     lines          their number
//     tokens         [line, column, length, kind]: all but blanks, line ends and continuation marks
//     declarations   objects with id, kind, name, accessor, visibility, line, endLine,
//                    parameters (their names), type (as written), scope (an id); null: has none
//     links          [line, column, length, module, id]: module null for the own one, id null for
//                    the module itself
//
// Where lines are chosen, only they have tokens and links. Lines and columns count from 1, columns
// and lengths are in Unicode code points; in the length of a token over several lines a line end
// counts as one.
//
// Tested by tests/golden/exact.
#pragma once

#include "listing/document.h"
#include "listing/output.h"

namespace tintline::listing {

class JsonDocument : public Document {
 public:
  JsonDocument(std::ostream& out, const Options& options, const Targets& targets);
  void add(const Source& source) override;
  void close() override;

 private:
  struct Writer;

  Output out_;
  const Options& options_;
  const Targets& targets_;
};

}  // namespace tintline::listing
