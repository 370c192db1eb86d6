// All about one section of a machine, on a page.
#ifndef BROWSE_PAGE_H_
#define BROWSE_PAGE_H_

#include <cstddef>
#include <string>
#include <vector>

#include "browse/relations.h"
#include "compiled/meta.h"
#include "machine/machine.h"
#include "support/json.h"
#include "support/terminal.h"
#include "support/text_stream.h"

namespace rux::browse {

class Page {
 public:
  // Of the section, or the entry of a kind without NAMEs, at a path as rux get takes it. The
  // machine must outlive the page. Throws a Failure when nothing is there.
  Page(const machine::Machine& machine, const std::string& path);

  // What it is and belongs to, its entries with the amounts of limits, what its values use with all
  // that this uses, and what refers to it.
  void Write(support::OutputStyle style, support::TextStream& out) const;

  // docs/show.schema.json
  void Write(support::JsonObject& json) const;

 private:
  struct Item;  // an entry of a thing
  struct Subject {
    const language::SectionKind* kind;
    std::size_t ordinal;
    std::string key;  // of an entry; empty: a section
  };

  Subject SubjectAt(const std::string& path) const;
  Subject SubjectOf(std::size_t thing) const;
  std::vector<Item> ItemsOf(const Subject& subject) const;
  const compiled::TableCells* CellsOf(const Subject& subject) const;
  std::vector<std::string> Groups() const;
  std::vector<const Thing*> Lists() const;
  void FindUsed();

  void WriteItems(const Subject& subject, support::OutputStyle style,
                  support::TextStream& out) const;
  void WriteItems(const Subject& subject, support::JsonObject& json) const;

  const machine::Machine& machine_;
  const MachineRelations relations_;
  const Subject subject_;
  const std::size_t thing_;
  std::vector<std::size_t> used_;  // what its values use, directly or not; each once
};

}  // namespace rux::browse

#endif  // BROWSE_PAGE_H_
