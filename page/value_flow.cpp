#include "page/value_flow.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "compiled/datum.h"
#include "inspect/entry_value.h"
#include "machine/value.h"
#include "page/contents.h"
#include "page/html.h"
#include "page/sources.h"
#include "ruxcomp/language/values.h"
#include "ruxcomp/model/handles.h"

namespace rux::page {
namespace {

using language::Shape;

class PieceWriter {
 public:
  PieceWriter(const Contents& contents, const ruxcomp::Entry& entry)
      : contents_(contents), value_(machine::ValueOf(entry)) {}

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

  std::optional<Thing> ThingOf(const compiled::Datum& item) const {
    return contents_.relations().NumberFor(contents_.machine().model(), nullptr, item);
  }

  const Contents& contents_;
  const machine::EntryValue value_;
  std::vector<Piece> pieces_;
};

// What a script calls the type of a value; else its number.
std::string TypeText(const machine::EntryValue& value, const std::string& key,
                     const std::optional<Excerpt>& source) {
  if (!value.type) return "";
  if (source) {
    if (const Excerpt::Item* item = source->Find(key)) return std::string(item->first_part);
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
  static constexpr std::size_t kMostSteps = 40;
  static constexpr std::size_t kMostDepth = 8;

  void WriteSteps(Thing thing) {
    for (const ruxcomp::Entry& entry : contents_.ValuesOf(thing)) {
      if (depth_ > 0 && steps_ >= kMostSteps) {
        WriteCut(thing);
        return;
      }
      ++steps_;
      WriteStep(thing, entry);
    }
  }

  void WriteStep(Thing thing, const ruxcomp::Entry& entry) {
    const std::string key = machine::KeyOf(contents_.SectionOf(thing), entry);
    const std::string type = TypeText(machine::ValueOf(entry), key, contents_.ExcerptOf(thing));
    out_ << "<li><b>" << Text{key} << "</b> ";
    if (!type.empty()) out_ << "<i>" << Text{type} << "</i> ";
    const std::vector<Piece> pieces = PiecesOf(contents_, entry);
    out_ << "<code>";
    WritePieces(pieces, out_);
    out_ << "</code>";
    const bool are_several =
        std::count_if(pieces.begin(), pieces.end(), [this](const Piece& piece) {
          return piece.thing && HasSteps(*piece.thing);
        }) > 1;
    for (const Piece& piece : pieces) {
      if (piece.thing && HasSteps(*piece.thing)) WriteUsed(*piece.thing, are_several);
    }
  }

  bool HasSteps(Thing thing) const {
    return shown_.count(thing) == 0 && !contents_.ValuesOf(thing).empty();
  }

  void WriteCut(Thing thing) {
    out_ << "<li>\u2026 more at ";
    WriteLink(contents_, thing, out_);
  }

  // Under its name where the step uses others as well.
  void WriteUsed(Thing thing, bool with_name) {
    if (with_name) {
      out_ << "<small>";
      WriteLink(contents_, thing, out_);
      out_ << "</small>";
    }
    out_ << "<ol>";
    if (depth_ >= kMostDepth || steps_ >= kMostSteps) {
      WriteCut(thing);
    } else {
      shown_.insert(thing);
      ++depth_;
      WriteSteps(thing);
      --depth_;
    }
    out_ << "</ol>";
  }

  const Contents& contents_;
  Html& out_;
  std::set<Thing> shown_;
  std::size_t steps_ = 0;
  std::size_t depth_ = 0;
};

}  // namespace

std::vector<Piece> PiecesOf(const Contents& contents, const ruxcomp::Entry& entry) {
  return PieceWriter(contents, entry).Write();
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

void WriteFlow(const Contents& contents, Thing thing, Html& out) {
  FlowWriter(contents, out).Write(thing);
}

}  // namespace rux::page
