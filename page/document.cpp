#include "page/document.h"

#include <cstddef>
#include <string>

#include "page/assets.h"
#include "page/contents.h"
#include "page/coverage.h"
#include "page/effects.h"
#include "page/html.h"
#include "page/limit_bands.h"
#include "page/parts.h"
#include "support/failure.h"
#include "support/sha256.h"
#include "support/standard_streams.h"
#include "support/workers.h"

namespace rux::page {

void WriteHead(const std::string& title, const Html& navigation, Html& out) {
  out.Trusted(kPageBegin)
      << "\n<html lang=en>\n<head>\n<meta charset=utf-8>\n<meta "
         "http-equiv=Content-Security-Policy content=\"default-src 'none'; style-src 'sha256-"
      << Text{support::Sha256Base64(kStyle)} << "'; script-src 'sha256-"
      << Text{support::Sha256Base64(kScript)}
      << "'; base-uri 'none'; form-action 'none'\">\n<meta name=viewport "
         "content=\"width=device-width, initial-scale=1\">\n<meta name=color-scheme "
         "content=\"light "
         "dark\">\n<title>"
      << Text{title} << "</title>\n<style>";
  out.Trusted(kStyle) << "</style>\n</head>\n<body>\n<a class=skip href=#overview>Skip to the "
                         "content</a>\n<header><h1>"
                      << Text{title} << "</h1><nav aria-label=\"Parts of the page\">" << navigation
                      << "</nav></header>\n<main>\n";
}

void WriteEnd(Html& out) {
  out << "</main>\n<script>";
  out.Trusted(kScript) << "</script>\n</body>\n</html>\n";
}

namespace {

using support::ExitStatus;

// All but the cards, which are about as much work.
void WriteTables(const Contents& contents, const Effects& effects, const LimitBands& bands,
                 Html& out) {
  WriteOverview(contents, effects, out);
  WriteTests(contents, out);
  WriteChanges(contents, out);
  WriteFindings(contents, out);
  WriteSensorTable(contents, bands, out);
  WriteTrees(contents, out);
  WriteAccesses(contents, out);
}

// Of a large machine, another process writes the cards at the same time.
void WriteLargeMachine(const Contents& contents, const Effects& effects, const LimitBands& bands,
                       Html& out) {
  support::RunJobs(
      1, 1,
      [&](std::size_t) {
        Html cards;
        WriteCards(contents, effects, bands, cards);
        support::PrintOut(cards.markup());
        return ExitStatus::kDone;
      },
      [&](std::size_t, const support::JobResult& done) {
        if (done.status != ExitStatus::kDone)
          throw support::Failure(ExitStatus::kTrouble, "the page cannot be written");
        out.Trusted(done.output);
      },
      [] {}, [&] { WriteTables(contents, effects, bands, out); });
}

}  // namespace

std::string PageOf(const Contents& contents) {
  constexpr std::size_t kBytesOfThing = 3000;  // about as many as are needed
  constexpr std::size_t kManyThings = 2000;
  const std::size_t things = contents.relations().things().size();
  Html navigation;
  WriteNavigation(contents, navigation);
  const LimitBands bands(contents.machine());
  const Effects effects(contents);
  Html out;
  out.Reserve(things * kBytesOfThing);
  WriteHead(contents.Title(), navigation, out);
  if (things < kManyThings) {
    WriteTables(contents, effects, bands, out);
    WriteCards(contents, effects, bands, out);
  } else {
    WriteLargeMachine(contents, effects, bands, out);
  }
  WriteEnd(out);
  return out.Take();
}

}  // namespace rux::page
