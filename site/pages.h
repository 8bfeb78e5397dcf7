// The pages of a site.
//
// Tested by tests/unit/site/site_test.cpp and tests/browser/site.py.
#pragma once

#include <cstdint>
#include <ostream>
#include <span>

#include "listing/document.h"
#include "listing/options.h"
#include "site/site.h"
#include "site/words.h"

namespace tintline::site {

// A page beside those of the modules: kPageFiles.
void writePage(Page page, std::ostream& out, const Site& site, const listing::Options& options);

// The page of a module, which `kModuleFolder` and the `page` of its facts name. `references` are
// those of the module. `maker` makes pages of their own.
void writeModulePage(std::ostream& out, const Project& project, std::uint32_t index,
                     const vb::Module& module, std::span<const vb::Reference> references,
                     const listing::DocumentMaker& maker);

}  // namespace tintline::site
