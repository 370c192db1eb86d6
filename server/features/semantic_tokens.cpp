// textDocument/semanticTokens: what the pieces of a script mean, for colours.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "assistance/place.h"
#include "assistance/tokens.h"
#include "protocol/json.h"
#include "protocol/params.h"
#include "protocol/positions.h"
#include "server/asking.h"
#include "server/feature.h"
#include "server/session.h"
#include "server/token_memory.h"
#include "support/text_file.h"
#include "workspace/documents.h"

namespace rux::server {
namespace {

using assistance::Token;
using protocol::Json;

// By the numbers of their kinds.
constexpr const char* kTokenTypes[] = {
    "keyword",     // of a section
    "property",    // a key
    "enumMember",  // a word
    "type",        // of a value
    "class",       // the name of a section
    "function",    // an action
    "struct",      // a table
    "variable",    // a global
    "property",    // a value of a section
    "property",    // a property
    "parameter",   // an argument
    "operator",   "number", "string",
};
constexpr std::uint32_t kDefinition = 1;  // a bit: the first modifier
constexpr std::size_t kNumbersOfToken = 5;

// Each type once, as numbers name them.
const std::vector<std::string>& Legend() {
  static const std::vector<std::string> legend = [] {
    std::vector<std::string> types;
    for (const char* type : kTokenTypes) {
      if (std::find(types.begin(), types.end(), type) == types.end()) types.emplace_back(type);
    }
    return types;
  }();
  return legend;
}

std::uint32_t NumberOfType(Token::Kind kind) {
  const std::string type = kTokenTypes[static_cast<std::size_t>(kind)];
  const auto found = std::find(Legend().begin(), Legend().end(), type);
  return static_cast<std::uint32_t>(found - Legend().begin());
}

// Each relative to the one before.
class TokenWriter {
 public:
  void Add(protocol::Range range, const Token& token) {
    if (range.end.character <= range.start.character) return;
    const std::uint32_t lines = range.start.line - last_.line;
    const std::uint32_t characters = range.start.character - (lines == 0 ? last_.character : 0);
    const std::uint32_t numbers[kNumbersOfToken] = {
        lines, characters, range.end.character - range.start.character, NumberOfType(token.kind),
        token.is_definition ? kDefinition : 0};
    numbers_.insert(numbers_.end(), std::begin(numbers), std::end(numbers));
    last_ = range.start;
  }
  TokenNumbers Take() { return std::move(numbers_); }

 private:
  TokenNumbers numbers_;
  protocol::Position last_;
};

// A token of several lines is one for each: clients need not know others.
void AddToken(const Asked& asked, const Token& token, TokenWriter& writer) {
  const auto range_of = [&](support::ByteRange bytes) {
    return asked.machine.RangeOf(asked.at.file, bytes);
  };
  const protocol::Range all = range_of(token.range);
  if (all.start.line == all.end.line) return writer.Add(all, token);
  std::uint32_t begin = token.range.begin;
  for (std::uint32_t at = begin; at < token.range.end; ++at) {
    if (range_of({at, at + 1}).end.line == range_of({begin, begin}).start.line) continue;
    writer.Add(range_of({begin, at}), token);
    begin = at + 1;
  }
  writer.Add(range_of({begin, token.range.end}), token);
}

// Those that touch the bytes.
TokenNumbers NumbersOf(const std::vector<Asked>& places, const protocol::Range* within) {
  TokenWriter writer;
  if (places.empty()) return {};
  const Asked& asked = places.front();
  const assistance::Id file = asked.at.file;
  support::ByteRange bytes{0,
                           static_cast<std::uint32_t>(asked.at.index.files()[file]->text().size())};
  if (within != nullptr) {
    bytes = {asked.machine.OffsetOf(file, within->start),
             asked.machine.OffsetOf(file, within->end)};
  }
  for (const Token& token : assistance::TokensOf(asked.at.index, file)) {
    if (token.range.end < bytes.begin || token.range.begin > bytes.end) continue;
    AddToken(asked, token, writer);
  }
  return writer.Take();
}

Json TokensOfAll(const Session& session, const Json& params) {
  TokenNumbers numbers = NumbersOf(AskedAbout(session, params), nullptr);
  Json data = numbers;
  const std::string& uri = session.DocumentOf(params).uri();
  return {{"resultId", session.tokens.Keep(uri, std::move(numbers))}, {"data", std::move(data)}};
}

Json TokensOfRange(const Session& session, const Json& params) {
  const auto range = protocol::Required<protocol::Range>(params, "range");
  return {{"data", NumbersOf(AskedAbout(session, params), &range)}};
}

// What differs, in one piece.
Json EditOf(const TokenNumbers& before, const TokenNumbers& now) {
  const auto [old_begin, begin] =
      std::mismatch(before.begin(), before.end(), now.begin(), now.end());
  const auto [old_end, end] = std::mismatch(before.rbegin(), std::make_reverse_iterator(old_begin),
                                            now.rbegin(), std::make_reverse_iterator(begin));
  return {{"start", old_begin - before.begin()},
          {"deleteCount", old_end.base() - old_begin},
          {"data", TokenNumbers(begin, end.base())}};
}

Json TokensOfChange(const Session& session, const Json& params) {
  const std::string& uri = session.DocumentOf(params).uri();
  const auto id = protocol::Required<std::string>(params, "previousResultId");
  const TokenMemory::Sent* sent = session.tokens.Find(uri, id);
  if (sent == nullptr) return TokensOfAll(session, params);
  TokenNumbers numbers = NumbersOf(AskedAbout(session, params), nullptr);
  Json edits = Json::array();
  if (numbers != sent->numbers) edits.push_back(EditOf(sent->numbers, numbers));
  return {{"resultId", session.tokens.Keep(uri, std::move(numbers))}, {"edits", edits}};
}

}  // namespace

Feature SemanticTokens() {
  return {"semanticTokensProvider",
          {{"legend", {{"tokenTypes", Legend()}, {"tokenModifiers", {"definition"}}}},
           {"range", true},
           {"full", {{"delta", true}}}},
          {{"textDocument/semanticTokens/full", Timing::kWithMachines, TokensOfAll},
           {"textDocument/semanticTokens/full/delta", Timing::kWithMachines, TokensOfChange},
           {"textDocument/semanticTokens/range", Timing::kWithMachines, TokensOfRange}}};
}

}  // namespace rux::server
