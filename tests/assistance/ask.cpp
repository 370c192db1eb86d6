#include "tests/assistance/ask.h"

#include <algorithm>
#include <cstdint>

#include "assistance/allowing.h"
#include "assistance/calls.h"
#include "assistance/completion.h"
#include "assistance/definition.h"
#include "assistance/highlights.h"
#include "assistance/hints.h"
#include "assistance/hover.h"
#include "assistance/refactorings.h"
#include "assistance/references.h"
#include "assistance/rename.h"
#include "assistance/selection.h"
#include "assistance/signature.h"
#include "assistance/tokens.h"
#include "sources/allow_comments.h"

namespace {

using namespace rux::assistance;

class Inside {
 public:
  explicit Inside(const Place& at) : at_(at) {}
  bool operator()(const Location& each) const {
    return each.range.begin <= each.range.end &&
           each.range.end <= at_.index.files()[each.file]->text().size();
  }
  bool operator()(ByteRange range) const { return (*this)(Location{at_.file, range}); }
  bool operator()(const Highlight& each) const { return (*this)(each.range); }

 private:
  const Place& at_;
};

// What takes a look at all of the file: at few of its places.
const char* AskAboutFile(const Place& at, const Inside& inside) {
  for (const auto scope : {rux::sources::AllowScope::kLine, rux::sources::AllowScope::kSection,
                           rux::sources::AllowScope::kFile}) {
    const auto edit = AllowAt(*at.index.files()[at.file], at.offset, "an-id", scope);
    if (edit && !inside(ByteRange{edit->offset, edit->offset})) return "a comment is in the file";
  }
  std::uint32_t end = 0;
  for (const Token& token : TokensOf(at.index, at.file)) {
    if (token.range.begin < end || !inside(token.range)) return "tokens follow each other";
    end = token.range.end;
  }
  const auto size = static_cast<std::uint32_t>(at.index.files()[at.file]->text().size());
  for (const Hint& hint : HintsIn(at.index, at.file, {0, size})) {
    if (hint.offset > size) return "a hint is in the file";
  }
  return nullptr;
}

const char* AskAboutCalls(const Place& at) {
  const Id action = ActionAt(at);
  if (action == kNone) return nullptr;
  for (const Calls& calls : CallersOf(at.index, action)) {
    if (calls.places.empty()) return "a caller has places";
  }
  return nullptr;
}

template <class List>
bool AreAll(const List& list, const Inside& inside) {
  return std::all_of(list.begin(), list.end(), inside);
}

}  // namespace

const char* AskAll(const Place& at) {
  const Inside inside(at);
  if (!AreAll(DefinitionsAt(at), inside)) return "definitions are in their files";
  if (!AreAll(ReferencesAt(at, true), inside)) return "references are in their files";
  if (!AreAll(HighlightsAt(at), inside)) return "highlights are in the file";
  const auto hover = HoverAt(at);
  if (hover && !inside(hover->range)) return "what a hover is about is in the file";
  const auto signature = SignatureAt(at);
  if (signature && signature->parameters.empty()) return "a signature has parameters";
  if (!inside(ProposalsAt(at).range)) return "what proposals replace is in the file";
  if (!inside(RenamableAt(at).range)) return "what can be renamed is in the file";
  for (const Refactoring& each : RefactoringsAt(at)) {
    const bool are_inside = std::all_of(each.edits.begin(), each.edits.end(),
                                        [&](const Edit& edit) { return inside(edit.at); });
    if (!are_inside) return "edits are in their files";
  }
  if (at.offset % 64 == 0) {
    if (const char* fault = AskAboutFile(at, inside)) return fault;
  }
  if (const char* fault = AskAboutCalls(at)) return fault;
  for (const ByteRange range : SelectionsAt(at)) {
    const bool has_place = range.begin <= at.offset && at.offset <= range.end;
    if (!inside(range) || !has_place) return "a selection has the place";
  }
  return nullptr;
}
