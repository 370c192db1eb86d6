// The references to a thing of a machine, and those that it makes.
#ifndef BROWSE_REFS_H_
#define BROWSE_REFS_H_

#include <cstddef>
#include <string>
#include <vector>

#include "browse/relations.h"
#include "ruxcomp/language/sections.h"
#include "support/failure.h"
#include "support/json.h"
#include "support/text_stream.h"

namespace rux::browse {

// The kind of that keyword, in any case; null when there is none.
const language::SectionKind* FindKindInAnyCase(const std::string& keyword);
// The failure of a keyword without a kind, which names those near it.
support::Failure NoSuchKind(const std::string& keyword);

// The numbers of the things that a query names, in the order of the relations:
//
//   FAN1, G_FAN_MAX, ST_FAN   a NAME, or the key of a global, repeater or word
//   #0x201                    an ID
//   SENSOR/FAN1               the same of one kind
//
// Throws a Failure of findings when there is none, which says what is near, and one of wrong usage
// for a query of another form.
std::vector<std::size_t> FindThings(const Relations& relations, const std::string& query);

// "  referred to by" and "  refers to", each with a line for every link of the thing.
void WriteLinks(const Relations& relations, std::size_t thing, support::TextStream& out);
// Members "referred_by" and "refers_to".
void WriteLinks(const Relations& relations, std::size_t thing, support::JsonObject& json);

// Of each of the things: what it is, and its links.
void WriteRefs(const Relations& relations, const std::vector<std::size_t>& things, bool uses_colour,
               support::TextStream& out);

// docs/refs.schema.json
void WriteRefs(const Relations& relations, const std::vector<std::size_t>& things,
               const std::string& file, support::JsonObject& json);

}  // namespace rux::browse

#endif  // BROWSE_REFS_H_
