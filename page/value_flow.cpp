#include "page/value_flow.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "browse/relations.h"
#include "compiled/datum.h"
#include "inspect/entry_value.h"
#include "machine/value.h"
#include "page/contents.h"
#include "page/html.h"
#include "page/sources.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/language/values.h"
#include "ruxcomp/model/handles.h"

namespace rux::page {
namespace {

using language::Shape;

class PieceWriter {
 public:
  PieceWriter(const Contents& contents, Thing thing, const ruxcomp::Entry& entry)
      : contents_(contents), thing_(thing), entry_(entry), value_(machine::ValueOf(entry)) {}

  std::vector<Piece> Write() {
    if (!value_.type) {
      WriteRepeater();
    } else {
      WriteShape();
    }
    return std::move(pieces_);
  }

 private:
  void WriteRepeater() {
    AddPart("Count");
    Add(" \u00d7 ");
    WriteCall("Action");
  }

  void WriteShape() {
    switch (language::FindValueType(*value_.type).shape) {
      case Shape::kCalculation:
        return WriteCalculation();
      case Shape::kCall:
        return WriteCall("Name");
      case Shape::kBus:
      case Shape::kBusArgs:
        return WriteAccess();
      case Shape::kCell:
        AddPart("Table");
        Add("[");
        AddPart("Index");
        return Add("]");
      case Shape::kPair:
        if (IsCall()) return WriteConditionalCall();
        break;
      default:
        break;
    }
    AddAll();
  }

  void WriteCalculation() {
    const machine::EntryPart* sign = Find("Operator");
    const machine::EntryPart* operands = Find("Operand");
    if (sign == nullptr || operands == nullptr || sign->items.size() != 1 ||
        operands->items.size() != 2)
      return AddAll();
    AddItem(operands->items[0], false);
    Add(' ' + sign->items[0].text + ' ');
    AddItem(operands->items[1], false);
    const machine::EntryPart* results = Find("Result");
    if (results == nullptr || results->items.size() != 2) return;
    Add(" ? ");
    AddItem(results->items[0], false);
    Add(" : ");
    AddItem(results->items[1], false);
  }

  void WriteCall(const char* action) {
    AddPart(action);
    Add("(");
    AddPart("Args");
    Add(")");
  }

  bool IsCall() const {
    const language::ValueType& type = language::FindValueType(*value_.type);
    return type.Has(language::kCountsArguments);
  }

  void WriteConditionalCall() {
    AddPart("First");
    Add(" ? ");
    WriteCall("Second");
  }

  void WriteAccess() {
    AddNamed("bus ", "BusType");
    AddNamed(", base ", "BaseAddress");
    AddNamed(", operand ", "Operand");
    AddNamed(", number ", "Number");
    AddNamed(", data ", "Args");
  }

  void AddNamed(const char* lead, const char* part) {
    if (Find(part) == nullptr) return;
    Add(lead);
    AddPart(part);
  }

  void AddAll() {
    for (const machine::EntryPart& part : value_.parts) {
      if (!pieces_.empty()) Add(", ");
      AddItems(part);
    }
  }

  const machine::EntryPart* Find(const std::string& name) const {
    for (const machine::EntryPart& part : value_.parts) {
      if (part.name == name) return &part;
    }
    return nullptr;
  }

  void AddPart(const char* name) {
    if (const machine::EntryPart* part = Find(name)) AddItems(*part);
  }

  void AddItems(const machine::EntryPart& part) {
    for (const compiled::Datum& item : part.items) {
      if (&item != &part.items.front()) Add(", ");
      AddItem(item, part.is_address);
    }
  }

  void AddItem(const compiled::Datum& item, bool is_address) {
    pieces_.push_back({inspect::ItemText(item, is_address), ThingOf(item)});
  }

  void Add(std::string text) { pieces_.push_back({std::move(text)}); }

  // Numbers among the parts of values name nothing.
  std::optional<Thing> ThingOf(const compiled::Datum& item) const {
    if (item.row == nullptr || item.IsNumber()) return std::nullopt;
    for (const browse::Link* link : contents_.relations().From(thing_)) {
      const browse::Thing& to = contents_.At(link->to);
      if (to.name == item.text || (!to.key.empty() && to.key == item.text)) return link->to;
    }
    return std::nullopt;
  }

  const Contents& contents_;
  const Thing thing_;
  const ruxcomp::Entry& entry_;
  const machine::EntryValue value_;
  std::vector<Piece> pieces_;
};

// What a script calls the type of a value; else its number.
std::string TypeText(const machine::EntryValue& value, const std::string& key,
                     const std::optional<Excerpt>& source) {
  if (!value.type) return "";
  if (source) {
    for (const auto& [name, word] : source->items) {
      if (name == key) return word;
    }
  }
  return "type " + std::to_string(*value.type);
}

class FlowWriter {
 public:
  FlowWriter(const Contents& contents, Html& out) : contents_(contents), out_(out) {}

  void Write(Thing thing) {
    shown_.insert(thing);
    out_ << "<ol class=flow>";
    WriteSteps(thing);
    out_ << "</ol>";
  }

 private:
  // What is further away has a page of its own, to which a link leads.
  static constexpr std::size_t kMostSteps = 24;
  static constexpr std::size_t kMostDepth = 6;

  void WriteSteps(Thing thing) {
    for (const ruxcomp::Entry& entry : InOrder(thing)) {
      ++steps_;
      WriteStep(thing, entry);
    }
  }

  // The values as the script writes them, where it is known; else as the meta file has them.
  std::vector<ruxcomp::Entry> InOrder(Thing thing) const {
    std::vector<ruxcomp::Entry> values;
    for (const ruxcomp::Entry& entry : contents_.EntriesOf(thing)) {
      if (IsValue(entry)) values.push_back(entry);
    }
    const std::optional<Excerpt>& source = contents_.ExcerptOf(thing);
    if (!source || values.size() < 2) return values;
    const ruxcomp::Section section = contents_.SectionOf(thing);
    const auto place = [&](const ruxcomp::Entry& entry) {
      const std::string key = machine::KeyOf(section, entry);
      return std::find_if(source->items.begin(), source->items.end(),
                          [&](const auto& item) { return item.first == key; });
    };
    std::stable_sort(values.begin(), values.end(),
                     [&](const auto& a, const auto& b) { return place(a) < place(b); });
    return values;
  }

  void WriteStep(Thing thing, const ruxcomp::Entry& entry) {
    const std::string key = machine::KeyOf(contents_.SectionOf(thing), entry);
    const std::string type = TypeText(machine::ValueOf(entry), key, contents_.ExcerptOf(thing));
    out_ << "<li><b>" << Text{key} << "</b> ";
    if (!type.empty()) out_ << "<i>" << Text{type} << "</i> ";
    const std::vector<Piece> pieces = PiecesOf(contents_, thing, entry);
    out_ << "<code>";
    WritePieces(pieces, out_);
    out_ << "</code>";
    for (const Piece& piece : pieces) {
      if (piece.thing) WriteUsed(*piece.thing);
    }
  }

  void WriteUsed(Thing thing) {
    if (depth_ >= kMostDepth || steps_ >= kMostSteps || !shown_.insert(thing).second) return;
    if (!HasValues(thing)) return;
    ++depth_;
    out_ << "<ol>";
    WriteSteps(thing);
    out_ << "</ol>";
    --depth_;
  }

  bool HasValues(Thing thing) const {
    for (const ruxcomp::Entry& entry : contents_.EntriesOf(thing)) {
      if (IsValue(entry)) return true;
    }
    return false;
  }

  const Contents& contents_;
  Html& out_;
  std::set<Thing> shown_;
  std::size_t steps_ = 0;
  std::size_t depth_ = 0;
};

}  // namespace

bool IsValue(const ruxcomp::Entry& entry) {
  switch (language::ClassOf(entry.identifier())) {
    case RUX_CLASS_Repeater:
    case RUX_CLASS_Value:
    case RUX_CLASS_Global:
      return true;
    default:
      return false;
  }
}

std::vector<Piece> PiecesOf(const Contents& contents, Thing thing, const ruxcomp::Entry& entry) {
  return PieceWriter(contents, thing, entry).Write();
}

void WritePieces(const std::vector<Piece>& pieces, Html& out) {
  for (const Piece& piece : pieces) {
    if (piece.thing) {
      out << "<a href=#t" << *piece.thing << ">" << Text{piece.text} << "</a>";
    } else {
      out << Text{piece.text};
    }
  }
}

std::string TextOf(const std::vector<Piece>& pieces) {
  std::string text;
  for (const Piece& piece : pieces) text += piece.text;
  return text;
}

void WriteFlow(const Contents& contents, Thing thing, Html& out) {
  FlowWriter(contents, out).Write(thing);
}

}  // namespace rux::page
