// GROUPs and PELMGROUPs as trees that open and close.
#include <cstddef>
#include <vector>

#include "browse/relations.h"
#include "page/contents.h"
#include "page/html.h"
#include "page/marks.h"
#include "page/parts.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "support/number_text.h"

namespace rux::page {
namespace {

class Tree {
 public:
  // Of sections that each name the one above them in the entry `parent`.
  Tree(const Contents& contents, language::SectionId kind, language::EntryId parent)
      : contents_(contents),
        range_(contents.Of(kind)),
        children_(range_.size()),
        leaves_(range_.size()),
        is_written_(range_.size()) {
    for (Thing thing = range_.begin; thing < range_.end; ++thing) {
      std::vector<Thing>* siblings = &roots_;
      for (const browse::Link* link : contents.relations().From(thing)) {
        const bool is_above = link->key == language::KeywordOf(parent);
        if (is_above && contents.Is(link->to, kind)) siblings = &children_[link->to - range_.begin];
      }
      siblings->push_back(thing);
    }
  }

  // What belongs to one of the sections without being one.
  void AddLeaf(Thing section, Thing leaf) { leaves_[section - range_.begin].push_back(leaf); }

  void Write(Html& out) {
    out << "<ul class=tree>";
    for (const Thing root : roots_) WriteNode(root, 0, out);
    // Sections of a damaged machine may contain each other.
    for (Thing thing = range_.begin; thing < range_.end; ++thing) WriteNode(thing, 0, out);
    out << "</ul>";
  }

  std::size_t size() const { return range_.size(); }

 private:
  // What is deeper is written beside what it is in.
  static constexpr std::size_t kDeepest = 64;
  static constexpr std::size_t kMostOpen = 400;    // leaves of a tree that begins open
  static constexpr std::size_t kMostLeaves = 500;  // that a node names

  void WriteNode(Thing thing, std::size_t depth, Html& out) {
    const std::size_t i = thing - range_.begin;
    if (is_written_[i]) return;
    is_written_[i] = true;
    out << "<li>";
    WriteLabel(thing, out);
    if (!children_[i].empty() || !leaves_[i].empty()) {
      out << (IsOpen() ? Html() << " <details open><summary>" : Html() << " <details><summary>");
      WriteCounts(i, out);
      out << "</summary><ul>";
      WriteLeaves(leaves_[i], out);
      if (depth < kDeepest) {
        for (const Thing child : children_[i]) WriteNode(child, depth + 1, out);
      }
      out << "</ul></details>";
    }
    out << "\n";
  }

  // "2 groups, 8 sensors"
  void WriteCounts(std::size_t i, Html& out) const {
    const std::size_t below = children_[i].size();
    const std::size_t leaves = leaves_[i].size();
    if (below > 0) out << Text{support::CountText(below, "group")};
    if (below > 0 && leaves > 0) out << ", ";
    if (leaves > 0) out << Text{support::CountText(leaves, "sensor")};
  }

  bool IsOpen() const { return contents_.Of(language::SECTION_SENSOR).size() <= kMostOpen; }

  void WriteLabel(Thing thing, Html& out) const {
    WriteLink(contents_, thing, out);
    WriteMarks(contents_, thing, out);
  }

  void WriteLeaves(const std::vector<Thing>& leaves, Html& out) const {
    if (leaves.empty()) return;
    out << "<li class=leaves>";
    if (!IsOpen()) out << "<noscript>";
    for (std::size_t i = 0; i < leaves.size() && i < kMostLeaves; ++i) {
      out << "<span>";
      WriteLabel(leaves[i], out);
      out << "</span> ";
    }
    if (leaves.size() > kMostLeaves)
      out << "and " << leaves.size() - kMostLeaves << " more in the table of sensors";
    if (!IsOpen()) out << "</noscript>";
  }

  const Contents& contents_;
  const Contents::Range range_;
  std::vector<Thing> roots_;
  std::vector<std::vector<Thing>> children_;
  std::vector<std::vector<Thing>> leaves_;
  std::vector<bool> is_written_;
};

void WriteTree(const char* title, Tree& tree, Html& out) {
  if (tree.size() == 0) return;
  out << "<div><h3>" << Text{title} << "</h3>";
  tree.Write(out);
  out << "</div>";
}

}  // namespace

void WriteTrees(const Contents& contents, Html& out) {
  Tree groups(contents, language::SECTION_GROUP, language::ENTRY_PARENT);
  Tree lists(contents, language::SECTION_PELMGROUP, language::ENTRY_PID);
  const Contents::Range sensors = contents.Of(language::SECTION_SENSOR);
  for (Thing sensor = sensors.begin; sensor < sensors.end; ++sensor) {
    for (const browse::Link* link : contents.relations().From(sensor)) {
      if (contents.Is(link->to, language::SECTION_GROUP)) groups.AddLeaf(link->to, sensor);
    }
    for (const browse::Link* link : contents.relations().To(sensor)) {
      if (contents.Is(link->from, language::SECTION_PELMGROUP)) lists.AddLeaf(link->from, sensor);
    }
  }
  out << "<section id=groups><h2>Groups</h2><div class=two>";
  WriteTree("GROUP", groups, out);
  WriteTree("PELMGROUP", lists, out);
  out << "</div></section>\n";
}

}  // namespace rux::page
