#include "browse/refs.h"

#include <strings.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "browse/relations.h"
#include "inspect/path.h"
#include "machine/place.h"
#include "ruxcomp/language/rows.h"
#include "ruxcomp/language/sections.h"
#include "support/failure.h"
#include "support/json.h"
#include "support/nearest.h"
#include "support/safe_text.h"
#include "support/terminal.h"
#include "support/text_stream.h"

namespace rux::browse {
namespace {

struct Query {
  std::optional<std::string> kind;
  std::optional<std::uint32_t> id;
  std::string name;

  bool IsOfKind(const Thing& thing) const {
    return !kind || strcasecmp(kind->c_str(), thing.kind->keyword) == 0;
  }
  bool Fits(const Thing& thing) const {
    if (!IsOfKind(thing)) return false;
    return id ? thing.id == id : thing.name == name || (!thing.key.empty() && thing.key == name);
  }
};

Query QueryOf(const std::string& text) {
  const std::vector<inspect::PathStep> steps = inspect::ParsePath(text);
  if (steps.size() > 2) {
    throw support::Failure(support::ExitStatus::kWrongUsage,
                           "{} has too many steps: expected NAME, #ID or KIND/NAME", text);
  }
  Query query;
  if (steps.size() == 2) query.kind = steps.front().text;
  query.id = steps.back().NumberAfter('#');
  query.name = steps.back().text;
  return query;
}

support::Failure NothingFound(const Relations& relations, const Query& query,
                              const std::string& text) {
  if (query.kind && FindKindInAnyCase(*query.kind) == nullptr) return NoSuchKind(*query.kind);
  std::vector<std::string> names;
  for (const Thing& thing : relations.things()) {
    if (!query.IsOfKind(thing)) continue;
    if (thing.name) names.push_back(*thing.name);
    if (!thing.key.empty()) names.push_back(thing.key);
  }
  const std::string near =
      query.id
          ? ""
          : support::NearText(query.name, names, "'rux table MACHINE --kind KIND' lists sections");
  return inspect::NotFound("nothing is called " + text + near);
}

using End = std::size_t Link::*;

void WriteList(const char* title, const Relations& relations, const std::vector<const Link*>& links,
               End other, support::TextStream& out) {
  if (links.empty()) return;
  out += title;
  for (const Link* link : links) {
    out += "    " + relations.things()[link->*other].Title() + "  " + support::SafeText(link->key) +
           PlaceText(link->place) + '\n';
  }
}

void WriteList(const char* title, const Relations& relations, const std::vector<const Link*>& links,
               End other, support::JsonObject& json) {
  json.Objects(title, links, [&](support::JsonObject& object, const Link* link) {
    object.Member("entry", link->key);
    machine::WritePlace(object, link->place);
    const Thing& linked = relations.things()[link->*other];
    object.Object("thing", [&](support::JsonObject& thing) { WriteThing(thing, linked); });
  });
}

}  // namespace

const language::SectionKind* FindKindInAnyCase(const std::string& keyword) {
  return language::FindRow(language::kSectionKinds, [&](const language::SectionKind& kind) {
    return strcasecmp(kind.keyword, keyword.c_str()) == 0;
  });
}

support::Failure NoSuchKind(const std::string& keyword) {
  std::vector<std::string> keywords;
  for (const language::SectionKind& kind : language::kSectionKinds)
    keywords.emplace_back(kind.keyword);
  return inspect::NotFound(
      "no such kind: " + support::NameText(keyword) +
      support::NearText(keyword, keywords, "kinds are the keywords of sections, such as SENSOR"));
}

std::vector<std::size_t> FindThings(const Relations& relations, const std::string& query) {
  const Query wanted = QueryOf(query);
  std::vector<std::size_t> found;
  for (std::size_t i = 0; i < relations.things().size(); ++i) {
    if (wanted.Fits(relations.things()[i])) found.push_back(i);
  }
  if (found.empty()) throw NothingFound(relations, wanted, query);
  return found;
}

void WriteLinks(const Relations& relations, std::size_t thing, support::TextStream& out) {
  WriteList("  referred to by\n", relations, relations.To(thing), &Link::from, out);
  WriteList("  refers to\n", relations, relations.From(thing), &Link::to, out);
}

void WriteLinks(const Relations& relations, std::size_t thing, support::JsonObject& json) {
  WriteList("referred_by", relations, relations.To(thing), &Link::from, json);
  WriteList("refers_to", relations, relations.From(thing), &Link::to, json);
}

void WriteRefs(const Relations& relations, const std::vector<std::size_t>& things, bool uses_colour,
               support::TextStream& out) {
  for (const std::size_t number : things) {
    const Thing& thing = relations.things()[number];
    out += support::Bold(thing.Title(), uses_colour) + PlaceText(thing.place) + '\n';
    WriteLinks(relations, number, out);
  }
}

void WriteRefs(const Relations& relations, const std::vector<std::size_t>& things,
               const std::string& file, support::JsonObject& json) {
  json.Schema(1);
  json.Member("file", file);
  json.Objects("things", things, [&](support::JsonObject& object, std::size_t number) {
    WriteThing(object, relations.things()[number]);
    WriteLinks(relations, number, object);
  });
}

}  // namespace rux::browse
