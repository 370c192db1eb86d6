// A debug meta file as a listing.
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "compiled/debug_meta.h"
#include "inspect/debug_text.h"
#include "inspect/dump.h"
#include "inspect/entry_value.h"
#include "inspect/section_list.h"
#include "ruxcomp/file/header.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "support/safe_text.h"
#include "support/wrap.h"

namespace rux::inspect {
namespace {

std::string ClassText(const compiled::DebugEntry& entry) {
  switch (ruxcomp::language::PayloadOf(entry.payload_type)) {
    case ruxcomp::language::PAYLOAD_DWORD:
      return "number";
    case ruxcomp::language::PAYLOAD_STRING:
      return "text";
    case ruxcomp::language::PAYLOAD_STRINGLIST:
      return "list";
    case ruxcomp::language::PAYLOAD_VALUE:
      return fmt::format("value of type {}", entry.value_type);
    case ruxcomp::language::PAYLOAD_REPEATER:
      return "repeater";
    default:
      return "";
  }
}

std::string NotationText(std::uint32_t notation) {
  const std::vector<std::string> names = NotationNames(notation);
  return names.empty() ? "no notation" : fmt::format("{}", fmt::join(names, ", "));
}

class DebugLister {
 public:
  DebugLister(const compiled::DebugMeta& meta, const Selection& selection, Listing& listing)
      : meta_(meta), places_(meta), texts_(meta), selection_(selection), listing_(listing) {}

  void List() {
    if (selection_.is_all()) {
      ListFiles();
      ListWords();
      ListKindCount();
    }
    for (std::size_t i = 0; i < meta_.kinds.size(); ++i) ListKind(i);
  }

 private:
  void ListFiles() {
    listing_.Blank();
    // Their bytes are in the first section.
    listing_.Title(meta_.files_extent.size == 0
                       ? "source files: not listed"
                       : fmt::format("source files: {}", meta_.files.size()));
    const std::size_t digits = std::to_string(meta_.files.size()).size();
    for (std::size_t i = 0; i < meta_.files.size(); ++i) {
      listing_.Line(fmt::format("  {:>{}}  {}", i, digits, places_.paths()[i]));
    }
  }

  void ListWords() {
    listing_.Blank();
    listing_.Title(fmt::format("defined words: {}", meta_.words.size()), meta_.word_count);
    for (const compiled::DebugWord& word : meta_.words) {
      listing_.Line("  " + support::SafeText(word.name) + " = " + NumberText(word.value),
                    word.extent);
    }
  }

  void ListKindCount() {
    if (!listing_.types()) return;
    listing_.Blank();
    listing_.Title(fmt::format("kinds: {}", meta_.kinds.size()), meta_.kind_count);
  }

  void ListKind(std::size_t ordinal) {
    const std::vector<compiled::DebugSection>& sections = meta_.kinds[ordinal];
    if (listing_.types() && selection_.is_all()) ListKindTitle(ordinal, sections);
    for (std::size_t i = 0; i < sections.size(); ++i) {
      const ruxcomp::language::SectionKind& kind =
          *ruxcomp::language::FindSourceKind(sections[i].identifier);
      if (selection_.Has(kind.source, i)) ListSection(sections[i], i);
    }
  }

  void ListKindTitle(std::size_t ordinal, const std::vector<compiled::DebugSection>& sections) {
    const std::string keyword =
        sections.empty()
            ? ""
            : std::string(ruxcomp::language::FindSourceKind(sections[0].identifier)->keyword) +
                  ", ";
    listing_.Blank();
    listing_.Title(fmt::format("kind block {}: {}sections: {}", ordinal, keyword, sections.size()),
                   meta_.section_counts[ordinal]);
  }

  void ListSection(const compiled::DebugSection& section, std::size_t ordinal) {
    if (!listing_.types()) listing_.Blank();
    const std::string title =
        fmt::format("{}: [{}] @{}", places_.Of(section), support::SafeText(section.name), ordinal);
    listing_.Title(listing_.types() ? title + ' ' + TypeText("", section) : title);
    listing_.Pieces("  ", section.pieces);
    for (auto entry = section.entries.begin(); entry != section.entries.end();) {
      if (entry->payload_type != 0) {
        ListEntry(section, *entry++);
      } else if (!listing_.types()) {
        ++entry;
      } else {
        entry = ListNotGiven(entry, section.entries.end());
      }
    }
  }

  void ListEntry(const compiled::DebugSection& section, const compiled::DebugEntry& entry) {
    std::vector<std::string> pieces = texts_.Of(section, entry);
    pieces.insert(pieces.begin(), fmt::format("  {}:", places_.Of(entry)));
    if (listing_.types()) pieces.push_back(TypeText(' ' + ClassText(entry), entry));
    listing_.Line(pieces);
    listing_.Pieces("    ", entry.pieces);
  }

  // " (0x10020015 text; required)", set off from what it follows.
  static std::string TypeText(const std::string& class_text, const compiled::DebugObject& object) {
    return fmt::format(" (0x{:08X}{}; {})", object.identifier, class_text,
                       NotationText(object.notation));
  }

  // All that were not given up to the next one that was. Returns that one.
  using Entries = std::vector<compiled::DebugEntry>::const_iterator;
  Entries ListNotGiven(Entries entry, Entries end) {
    std::vector<std::string> keys;
    const Entries first = entry;
    for (; entry != end && entry->payload_type == 0; ++entry)
      support::AddToList(keys, KeyText(*entry));
    if (keys.empty()) return entry;
    keys.front().insert(0, "  not given: ");
    listing_.Line(keys);
    for (Entries each = first; each != entry; ++each) listing_.Pieces("    ", each->pieces);
    return entry;
  }

  const compiled::DebugMeta& meta_;
  const SourcePlaces places_;
  const EntryTexts texts_;
  const Selection& selection_;
  Listing& listing_;
};

}  // namespace

void ListDebugMeta(const std::string& path, const compiled::DebugMeta& meta,
                   const Selection& selection, Listing& listing) {
  listing.Line(TitlePieces(path, compiled::Form::kDebugMeta, meta.version, meta.creation_time));
  listing.Pieces("  ", meta.header);
  DebugLister(meta, selection, listing).List();
}

}  // namespace rux::inspect
