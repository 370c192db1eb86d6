// Buses with their registers, and what accesses them.
#include <cstddef>
#include <map>
#include <set>
#include <string>

#include "page/bus_accesses.h"
#include "page/contents.h"
#include "page/grid.h"
#include "page/html.h"
#include "page/parts.h"

namespace rux::page {
namespace {

// "bus 2": what the filter is asked for.
void WriteBus(const std::string& bus, Html& row) {
  row << "<tr><th scope=row>";
  if (!bus.empty()) row << "bus " << Text{bus};
}

Html RowOf(const Contents& contents, const BusAccess& access, const std::set<Thing>& users) {
  constexpr std::size_t kMostUsers = 20;
  Html row;
  WriteBus(access.place.front(), row);
  for (std::size_t i = 1; i < access.place.size(); ++i) row << "<td>" << Text{access.place[i]};
  row << "<td>" << Text{access.is_write ? "write" : "read"} << "<td>";
  if (access.via) WriteLink(contents, *access.via, row);
  row << "<td>";
  std::size_t count = 0;
  for (const Thing user : users) {
    if (count == kMostUsers) break;
    if (count++ > 0) row << ", ";
    WriteLink(contents, user, row);
  }
  if (users.size() > kMostUsers) row << " and " << users.size() - kMostUsers << " more";
  return row;
}

}  // namespace

void WriteAccesses(const Contents& contents, Html& out) {
  const std::map<BusAccess, std::set<Thing>> accesses = BusAccessesOf(contents);
  if (accesses.empty()) return;
  Html caption;
  caption
      << "Every access of a value to a bus. Where calls pass the place, the table has what they "
         "pass or what is calculated from it, and via which action; VALUE_1 is a result that is "
         "known "
         "only when the machine runs.";
  Grid grid("accesses", caption);
  for (const char* part : kPlaceParts) grid.AddColumn(Html() << Text{part});
  for (const char* column : {"access", "via", "by"}) grid.AddColumn(Html() << Text{column});
  for (const auto& [access, users] : accesses) grid.AddRow(RowOf(contents, access, users));
  out << "<section id=accesses><h2>Buses</h2>";
  grid.Write(out);
  out << "</section>\n";
}

}  // namespace rux::page
