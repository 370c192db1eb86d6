// All about one section of a machine.
#ifndef BROWSE_OVERVIEW_H_
#define BROWSE_OVERVIEW_H_

#include <cstddef>
#include <string>
#include <vector>

#include "browse/relations.h"
#include "compiled/meta.h"
#include "machine/machine.h"
#include "ruxcomp/model/handles.h"
#include "support/json.h"
#include "support/terminal.h"
#include "support/text_stream.h"

namespace rux::browse {

class Overview {
 public:
  // Of the section, or the entry of a kind without NAMEs, at a path as rux get takes it. The
  // machine must outlive it. Throws a Failure when nothing is there.
  Overview(const machine::Machine& machine, const std::string& path);

  // What it is and belongs to, its entries with the amounts of limits, what its values use with all
  // that this uses, and what refers to it.
  void Write(support::OutputStyle style, support::TextStream& out) const;

  // docs/show.schema.json
  void Write(support::JsonObject& json) const;

 private:
  struct Item;  // an entry of a thing

  std::size_t ThingAt(const std::string& path) const;
  ruxcomp::Section SectionOf(std::size_t thing) const;
  std::vector<Item> ItemsOf(std::size_t thing) const;
  Item ItemOf(std::size_t thing, const ruxcomp::Entry& entry) const;
  const compiled::TableCells* CellsOf(std::size_t thing) const;
  std::vector<const Thing*> Lists() const;
  void FindUsed();

  void WriteItems(std::size_t thing, support::OutputStyle style, support::TextStream& out) const;
  void WriteItems(std::size_t thing, support::JsonObject& json) const;

  const machine::Machine& machine_;
  const MachineRelations relations_;
  const std::size_t thing_;
  std::vector<std::size_t> used_;  // what its values use, directly or not; each once
};

}  // namespace rux::browse

#endif  // BROWSE_OVERVIEW_H_
