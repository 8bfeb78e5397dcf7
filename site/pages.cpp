// See pages.h. Tested by tests/unit/site/site_test.cpp and tests/browser/site.py.
#include "site/pages.h"

#include "site/calls_page.h"
#include "site/index_page.h"
#include "site/metrics_page.h"
#include "site/names_page.h"
#include "site/page.h"
#include "site/unused_page.h"

namespace tintline::site {

void writePage(Page page, std::ostream& out, const Site& site, const listing::Options& options) {
  SitePage written(out, site, options, page);
  switch (page) {
    case Page::Index:
      writeIndex(written);
      break;
    case Page::Names:
      writeNames(written);
      break;
    case Page::Unused:
      writeUnused(written);
      break;
    case Page::Calls:
      writeCalls(written);
      break;
    case Page::Metrics:
      writeMetrics(written);
      break;
  }
  written.close();
}

}  // namespace tintline::site
