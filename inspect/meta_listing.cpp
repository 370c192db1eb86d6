// A meta file as a listing.
#include <fmt/format.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "compiled/datum.h"
#include "compiled/meta.h"
#include "inspect/dump.h"
#include "inspect/entry_value.h"
#include "inspect/section_list.h"
#include "inspect/section_names.h"
#include "ruxcomp/file/header.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/symbols.h"
#include "support/safe_text.h"

namespace rux::inspect {
namespace {

constexpr char kEmptyText[] = "\"\"";

// "0x11000004  number 4"
std::string IndexText(std::uint32_t index) {
  const ruxcomp::language::ClassRow* row = ruxcomp::language::FindClass(index);
  const std::string text = fmt::format("0x{:08X}", index);
  return row == nullptr
             ? text
             : fmt::format("{}  {} {}", text, row->title, ruxcomp::language::OrdinalOf(index));
}

std::vector<std::string> ValuesPieces(const std::vector<compiled::Datum>& values) {
  std::vector<std::string> pieces = PartPieces({"", false, values});
  if (pieces.size() == 1 && pieces.front().empty()) pieces.front() = kEmptyText;
  return pieces;
}

class MetaLister {
 public:
  MetaLister(const compiled::CompiledMeta& meta, const Selection& selection, Listing& listing)
      : meta_(meta), values_(meta), selection_(selection), listing_(listing) {}

  void List() {
    const bool lists_all = listing_.types() && selection_.is_all();
    if (lists_all) {
      listing_.Blank();
      listing_.Line(fmt::format("sections: {}", meta_.sections.size()), meta_.frame, 0);
    }
    std::map<std::uint32_t, std::size_t> counts;
    for (const compiled::CompiledSection& section : meta_.sections) {
      const std::size_t ordinal = counts[section.identifier]++;
      const ruxcomp::language::SectionKind& kind =
          *ruxcomp::language::FindCompiledKind(section.identifier);
      if (selection_.Has(kind.source, ordinal)) ListSection(section, kind, ordinal);
    }
    if (!lists_all) return;
    listing_.Pieces("", meta_.frame, 1);
    for (const compiled::CompiledTable& table : meta_.tables) ListTable(table);
  }

 private:
  void ListSection(const compiled::CompiledSection& section,
                   const ruxcomp::language::SectionKind& kind, std::size_t ordinal) {
    listing_.Blank();
    const std::string title = fmt::format("[{}] @{}", kind.keyword, ordinal);
    listing_.Title(listing_.types() ? title + fmt::format("  (0x{:08X})", section.identifier)
                                    : title);
    listing_.Pieces("  ", section.pieces);
    for (const compiled::CompiledEntry& entry : section.entries) ListEntry(section, entry);
    if (!listing_.types() && kind.source == ruxcomp::language::SECTION_TABLE) ListCellsOf(ordinal);
  }

  void ListEntry(const compiled::CompiledSection& section, const compiled::CompiledEntry& entry) {
    const std::string name = compiled::KeyOf(meta_, section, entry);
    const std::string key = name.empty() ? "(unresolved)" : support::SafeText(name);
    const std::vector<compiled::Datum> values = values_.Of(section, entry);
    if (!listing_.types()) {
      std::vector<std::string> pieces = ValuesPieces(values);
      pieces.front().insert(0, "  " + key + " = ");
      return listing_.Line(pieces);
    }
    listing_.Line(fmt::format("  {}  ({})", key, IndexText(entry.identifier)));
    // What an entry is made of before its values.
    constexpr std::size_t kHead = 2;
    listing_.Pieces("    ", entry.pieces, 0, kHead);
    for (std::size_t i = 0; i < entry.values.size(); ++i) {
      listing_.Line(fmt::format("    {:<26}{}", IndexText(entry.values[i]),
                                ValuesPieces({values[i]}).front()),
                    entry.pieces, kHead + i);
    }
  }

  // The cells that belong to the TABLE section of that ordinal.
  void ListCellsOf(std::size_t ordinal) {
    const compiled::CompiledTable* table =
        compiled::TableOf(meta_, ruxcomp::language::CLASS_TableData);
    if (table != nullptr && ordinal < table->cells.size()) ListCells(table->cells[ordinal]);
  }

  void ListTable(const compiled::CompiledTable& table) {
    constexpr std::size_t kHead = 2;  // class and length
    const std::size_t count = table.texts.size() + table.numbers.size() + table.cells.size();
    listing_.Blank();
    listing_.Title(fmt::format("table of class {}: {}",
                               ruxcomp::language::FindClass(table.base)->title, count));
    if (!table.note.empty()) listing_.Line("  note: " + table.note);
    listing_.Pieces("  ", table.pieces, 0, kHead);
    for (std::size_t i = 0; i < count; ++i) ListItem(table, i, kHead + i);
    listing_.Pieces("  ", table.pieces, kHead + count);
  }

  void ListItem(const compiled::CompiledTable& table, std::size_t ordinal, std::size_t piece) {
    if (!table.cells.empty()) {
      listing_.Line(fmt::format("  {}", ordinal), table.pieces, piece);
      ListCells(table.cells[ordinal]);
    } else {
      listing_.Line(fmt::format("  0x{:08X}  {}", table.base + ordinal, ItemText(table, ordinal)),
                    table.pieces, piece);
    }
  }

  static std::string ItemText(const compiled::CompiledTable& table, std::size_t ordinal) {
    if (!table.numbers.empty()) return NumberText(table.numbers[ordinal]);
    const std::string& text = table.texts[ordinal];
    return text.empty() ? kEmptyText : support::SafeText(text);
  }

  void ListCells(const compiled::TableCells& cells) {
    std::istringstream lines(CellsText(cells));
    for (std::string line; std::getline(lines, line);) listing_.Line("    " + line);
  }

  const compiled::CompiledMeta& meta_;
  const CompiledValues values_;
  const Selection& selection_;
  Listing& listing_;
};

}  // namespace

void ListMeta(const std::string& path, const compiled::CompiledMeta& meta,
              const Selection& selection, Listing& listing) {
  listing.Line(TitlePieces(path, compiled::Form::kMeta, meta.version, meta.creation_time));
  listing.Pieces("  ", meta.header);
  if (listing.raw()) listing.Line("directory of the tables");
  listing.Pieces("  ", meta.directory);
  MetaLister(meta, selection, listing).List();
}

}  // namespace rux::inspect
