// Every section with all that is known of it.
#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "browse/relations.h"
#include "compiled/datum.h"
#include "inspect/entry_value.h"
#include "machine/place.h"
#include "machine/value.h"
#include "page/contents.h"
#include "page/coverage.h"
#include "page/drivers.h"
#include "page/effects.h"
#include "page/html.h"
#include "page/limit_bands.h"
#include "page/marks.h"
#include "page/parts.h"
#include "page/sources.h"
#include "page/table_plot.h"
#include "page/value_flow.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/limits.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model/handles.h"
#include "ruxcomp/model/records.h"

namespace rux::page {
namespace {

// Limits from the lowest up, where the first of them is.
std::vector<ruxcomp::Entry> InReadingOrder(std::vector<ruxcomp::Entry> entries) {
  const auto place = [](const ruxcomp::Entry& entry) {
    const language::EntryRow* row = language::FindCompiledEntryRow(entry.identifier());
    const auto& limits = language::kLimitsUpwards;
    return row == nullptr ? std::end(limits)
                          : std::find(std::begin(limits), std::end(limits), row->source);
  };
  const auto is_limit = [&](const ruxcomp::Entry& entry) {
    return place(entry) != std::end(language::kLimitsUpwards);
  };
  const auto first = std::find_if(entries.begin(), entries.end(), is_limit);
  const auto end = std::stable_partition(first, entries.end(), is_limit);
  std::stable_sort(first, end, [&](const ruxcomp::Entry& a, const ruxcomp::Entry& b) {
    return place(a) < place(b);
  });
  return entries;
}

class Cards {
 public:
  Cards(const Contents& contents, const Effects& effects, const LimitBands& bands, Html& out)
      : contents_(contents), effects_(effects), bands_(bands), out_(out) {}

  void WriteKind(const language::SectionKind& kind) {
    const Contents::Range range = contents_.Of(kind.source);
    if (range.size() == 0) return;
    out_ << "<h3 id=k-" << Text{kind.keyword} << ">" << Text{kind.keyword} << " <small>"
         << range.size() << "</small></h3>\n";
    if (contents_.relations().things().size() <= kMostThings || range.size() <= kSmallKind) {
      out_ << "<div class=cards>";
      for (Thing thing = range.begin; thing < range.end; ++thing) WriteCard(thing);
      out_ << "</div>\n";
      return;
    }
    out_ << "<p>Too many to show at once: open a group of " << kGroup << ", or search.</p>\n";
    for (Thing first = range.begin; first < range.end; first += kGroup)
      WriteGroup(first, std::min<Thing>(first + kGroup, range.end));
  }

 private:
  // As many cards as a browser lays out at once; of a larger machine, those of small kinds.
  static constexpr std::size_t kMostThings = 1000;
  static constexpr std::size_t kSmallKind = 40;
  static constexpr std::size_t kGroup = 100;

  // The page's script takes the cards out of the noscript when they are needed.
  void WriteGroup(Thing begin, Thing end) {
    out_ << "<details class=group data-from=" << begin << " data-to=" << end << "><summary>"
         << Text{NameOf(contents_.At(begin))} << " \u2026 " << Text{NameOf(contents_.At(end - 1))}
         << "</summary><noscript>";
    for (Thing thing = begin; thing < end; ++thing) WriteCard(thing);
    out_ << "</noscript></details>\n";
  }

  void WriteCard(Thing thing) {
    const browse::Thing& what = contents_.At(thing);
    out_ << "<article id=t" << thing << "><h4><a href=#t" << thing << ">" << Text{NameOf(what)}
         << "</a> <small>" << Text{what.kind->keyword};
    if (what.id && what.name) out_ << " #0x" << Text{fmt::format("{:X}", *what.id)};
    out_ << "</small>";
    WriteMarks(contents_, thing, out_);
    WriteTestMark(contents_, thing, out_);
    out_ << "</h4>";
    WriteChangesOf(contents_, thing, out_);
    WriteFindingsOf(contents_, thing, out_);
    WriteCoverageOf(contents_, thing, out_);
    WriteEntries(thing);
    WriteEffects(thing);
    WriteValues(thing);
    WriteCells(thing);
    WriteLinks("referred to by", contents_.relations().To(thing), &browse::Link::from);
    WriteLinks("refers to", contents_.relations().From(thing), &browse::Link::to);
    WriteSource(thing);
    out_ << "</article>\n";
  }

  void WriteEntries(Thing thing) {
    const ruxcomp::Section section = contents_.SectionOf(thing);
    bool has_limit = false;
    Html list;
    for (const ruxcomp::Entry& entry : InReadingOrder(contents_.EntriesOf(thing))) {
      if (IsValue(entry) || entry.identifier() == RUX_ENTRY_NAME ||
          entry.identifier() == RUX_ENTRY_ID || entry.identifier() == RUX_ENTRY_SENSORS)
        continue;
      const std::optional<std::string> amount = contents_.AmountOf(thing, entry);
      has_limit = has_limit || amount;
      const std::string key = machine::KeyOf(section, entry);
      list << "<div><dt>" << Text{key == contents_.At(thing).key ? "text" : key} << "<dd>";
      if (amount) {
        list << Text{*amount};
      } else {
        WriteValue(thing, section, entry, list);
      }
      list << "</div>";
    }
    if (!list.is_empty()) out_ << "<dl>" << list << "</dl>";
    if (has_limit && contents_.Is(thing, language::SECTION_SENSOR))
      WriteBands(contents_.OrdinalOf(thing));
  }

  void WriteBands(std::size_t sensor) {
    const Scale* scale = bands_.ScaleFor(sensor);
    if (scale == nullptr) return;
    out_ << "<div class=band>";
    bands_.Write(sensor, out_);
    out_ << "<small>" << Text{ScaleEnd(scale->low)} << "</small><small>" << Text{scale->what}
         << "</small><small>" << Text{ScaleEnd(scale->high)} << "</small></div>";
  }

  // The defined word that a script says for a number; empty: it says the number.
  std::string_view WordFor(Thing thing, const ruxcomp::Section& section,
                           const ruxcomp::Entry& entry) const {
    const std::optional<Excerpt>& source = contents_.ExcerptOf(thing);
    const compiled::Datum datum = machine::DatumOf(entry.value());
    if (!source || entry.values().size() != 1 || !datum.IsNumber()) return {};
    const Excerpt::Item* item = source->Find(machine::KeyOf(section, entry));
    const bool is_word = item != nullptr && !language::ReadNumber(item->first_part).is_number;
    return is_word ? item->first_part : std::string_view();
  }

  // A link, where the entry is nothing but what it refers to.
  void WriteValue(Thing thing, const ruxcomp::Section& section, const ruxcomp::Entry& entry,
                  Html& out) const {
    const language::SectionKind* ids =
        machine::KindOfCompiledIds(section.kind(), entry.identifier());
    const std::optional<Thing> to = contents_.relations().NumberFor(
        contents_.machine().model(), ids, machine::DatumOf(entry.value()));
    if (to) return WriteLink(contents_, *to, out);
    const std::string_view word = WordFor(thing, section, entry);
    if (!word.empty()) out << Text{word} << " = ";
    out << Text{inspect::ValueText(machine::ValueOf(entry))};
  }

  // What the thing decides, and what drives it; of an action, what runs and decides it.
  void WriteEffects(Thing thing) {
    if (const Effect* effect = effects_.Of(thing)) WriteRuns(*effect);
    WriteDecision(thing);
    WriteDrivers(contents_, effects_, thing, out_);
  }

  void WriteRuns(const Effect& effect) {
    constexpr std::size_t kMost = 12;
    for (std::size_t i = 0; i < effect.runs.size() && i < kMost; ++i) {
      out_ << "<p><i>run by</i> ";
      WriteCaller(contents_, effect.runs[i], out_);
      out_ << " <i>decided by</i> ";
      WriteDeciders(contents_, effect, effect.runs[i], out_);
      out_ << "</p>";
    }
    if (effect.runs.size() > kMost)
      out_ << "<p><i>run by</i> " << effect.runs.size() - kMost << " more</p>";
  }

  void WriteDecision(Thing thing) {
    const std::vector<const Effect*> decided = effects_.DecidedBy(thing);
    if (decided.empty()) return;
    out_ << "<p><i>decides</i> ";
    for (const Effect* effect : decided) {
      if (effect != decided.front()) out_ << ", ";
      WriteDecided(*effect, thing);
    }
    out_ << "</p>";
  }

  // With the conditions of the runs that the reading decides.
  void WriteDecided(const Effect& effect, Thing reading) {
    WriteLink(contents_, effect.action, out_);
    for (const Effect::Run& run : effect.runs) {
      const bool is_decided =
          std::find(run.deciders.begin(), run.deciders.end(), reading) != run.deciders.end();
      if (!is_decided || run.conditions.empty()) continue;
      out_ << " (";
      WriteConditions(contents_, run, out_);
      out_ << ")";
    }
  }

  void WriteValues(Thing thing) {
    if (!contents_.ValuesOf(thing).empty()) WriteFlow(contents_, thing, out_);
  }

  void WriteCells(Thing thing) {
    if (!contents_.Is(thing, language::SECTION_TABLE)) return;
    const auto ordinal = static_cast<std::uint32_t>(contents_.OrdinalOf(thing));
    const ruxcomp::TableCells* cells = contents_.machine().model().table(ordinal);
    if (cells != nullptr) WritePlot(*cells, contents_.ExcerptOf(thing), out_);
  }

  void WriteLinks(const char* title, const std::vector<const browse::Link*>& links,
                  std::size_t browse::Link::*other) {
    if (links.empty()) return;
    constexpr std::size_t kMost = 500;
    out_ << "<p><i>" << Text{title} << "</i> ";
    Thing last = contents_.relations().things().size();
    for (std::size_t i = 0; i < links.size() && i < kMost; ++i) {
      const Thing thing = links[i]->*other;
      if (thing == last) continue;
      if (i > 0) out_ << ", ";
      WriteLink(contents_, thing, out_);
      last = thing;
    }
    if (links.size() > kMost) out_ << " and " << links.size() - kMost << " more";
    out_ << "</p>";
  }

  void WriteSource(Thing thing) {
    const std::optional<Excerpt>& source = contents_.ExcerptOf(thing);
    const std::optional<machine::Place>& place = contents_.At(thing).place;
    if (!source && !place) return;
    out_ << "<details class=source><summary>";
    if (place) {
      out_ << Text{contents_.PlaceText(*place)};
    } else {
      out_ << "script";
    }
    out_ << "</summary>";
    if (source) {
      out_ << "<pre>";
      for (const std::string_view line : source->lines) out_ << Line{line} << "\n";
      out_ << "</pre>";
    }
    out_ << "</details>";
  }

  const Contents& contents_;
  const Effects& effects_;
  const LimitBands& bands_;
  Html& out_;
};

}  // namespace

void WriteCards(const Contents& contents, const Effects& effects, const LimitBands& bands,
                Html& out) {
  out << "<section id=details><h2>Details</h2>\n";
  Cards cards(contents, effects, bands, out);
  // What others use, before what uses it.
  constexpr language::SectionId kFirst[] = {language::SECTION_ACTION, language::SECTION_REPEATER,
                                            language::SECTION_GLOBAL, language::SECTION_TABLE,
                                            language::SECTION_DEVICE, language::SECTION_SENSOR};
  for (const language::SectionId kind : kFirst) cards.WriteKind(language::KindOf(kind));
  for (const language::SectionKind& kind : language::kSectionKinds) {
    const bool is_first =
        std::find(std::begin(kFirst), std::end(kFirst), kind.source) != std::end(kFirst);
    if (!is_first) cards.WriteKind(kind);
  }
  out << "</section>\n";
}

}  // namespace rux::page
