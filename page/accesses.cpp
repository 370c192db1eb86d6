// Buses with their registers, and what accesses them.
#include <cstddef>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "inspect/entry_value.h"
#include "machine/value.h"
#include "page/contents.h"
#include "page/grid.h"
#include "page/html.h"
#include "page/parts.h"
#include "ruxcomp/language/values.h"
#include "ruxcomp/model/handles.h"

namespace rux::page {
namespace {

// The parts of an access that say where it goes, in the order of the columns.
constexpr const char* kParts[] = {"BusType", "BaseAddress", "Operand", "Number"};

struct Access {
  std::vector<std::string> where;  // the texts of the parts
  bool has_data;

  bool operator<(const Access& other) const {
    return std::tie(where, has_data) < std::tie(other.where, other.has_data);
  }
};
using Users = std::map<Access, std::vector<Thing>>;

// Numbers of equal length are in the order of what they are.
std::string PartText(const machine::EntryValue& value, const char* name) {
  for (const machine::EntryPart& part : value.parts) {
    if (part.name != name || part.items.empty()) continue;
    return inspect::ItemText(part.items.front(), part.is_address);
  }
  return "";
}

void AddAccess(const ruxcomp::Entry& entry, Thing thing, Users& users) {
  if (!IsValue(entry)) return;
  const machine::EntryValue value = machine::ValueOf(entry);
  if (!value.type) return;
  const language::Shape shape = language::FindValueType(*value.type).shape;
  if (shape != language::Shape::kBus && shape != language::Shape::kBusArgs) return;
  Access access{{}, shape == language::Shape::kBusArgs};
  for (const char* part : kParts) access.where.push_back(PartText(value, part));
  std::vector<Thing>& known = users[access];
  if (known.empty() || known.back() != thing) known.push_back(thing);
}

Html RowOf(const Contents& contents, const Access& access, const std::vector<Thing>& users) {
  constexpr std::size_t kMostUsers = 20;
  Html row;
  row << "<tr>";
  for (const std::string& part : access.where) {
    if (&part == &access.where.front()) {
      row << "<th scope=row>";
    } else {
      row << "<td>";
    }
    row << Text{part};
  }
  row << "<td>" << Text{access.has_data ? "with data" : ""} << "<td>";
  for (std::size_t i = 0; i < users.size() && i < kMostUsers; ++i) {
    if (i > 0) row << ", ";
    WriteLink(contents, users[i], row);
  }
  if (users.size() > kMostUsers) row << " and " << users.size() - kMostUsers << " more";
  return row;
}

}  // namespace

void WriteAccesses(const Contents& contents, Html& out) {
  Users users;
  for (Thing thing = 0; thing < contents.relations().things().size(); ++thing) {
    for (const ruxcomp::Entry& entry : contents.EntriesOf(thing)) AddAccess(entry, thing, users);
  }
  if (users.empty()) return;
  Html caption;
  caption << "Every access of a value to a bus. Operands may be arguments that calls pass: the "
             "search finds both.";
  Grid grid("accesses", caption);
  for (const char* part : kParts) grid.AddColumn(Html() << Text{part});
  grid.AddColumn(Html() << "Args");
  grid.AddColumn(Html() << "by");
  for (const auto& [access, things] : users) grid.AddRow(RowOf(contents, access, things));
  out << "<section id=accesses><h2>Buses</h2>";
  grid.Write(out);
  out << "</section>\n";
}

}  // namespace rux::page
