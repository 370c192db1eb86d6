// What tests cover of a machine, where its page says so. Without tests, nothing is written.
#ifndef PAGE_COVERAGE_H_
#define PAGE_COVERAGE_H_

#include "page/contents.h"
#include "page/html.h"

namespace rux::page {

// The part of the page: totals, cases that fail, everything that is not covered.
void WriteTests(const Contents& contents, Html& out);

// "covered" or "not covered"; nothing for a thing that has nothing to cover.
void WriteCovered(const Contents& contents, Thing thing, Html& out);
// The same as a mark that leads to the tests.
void WriteTestMark(const Contents& contents, Thing thing, Html& out);

// How much of it is covered, kind by kind, and what is not.
void WriteCoverageOf(const Contents& contents, Thing thing, Html& out);

}  // namespace rux::page

#endif  // PAGE_COVERAGE_H_
