// The whole of a compiled file, as a listing and as JSON.
#ifndef INSPECT_DUMP_H_
#define INSPECT_DUMP_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "compiled/debug_meta.h"
#include "compiled/file.h"
#include "compiled/meta.h"
#include "inspect/section_list.h"
#include "support/json.h"
#include "support/terminal.h"
#include "support/text_stream.h"

namespace rux::inspect {

// The lines of a dump, with the bytes that they describe beside them when those are asked for.
//
//   00000094: 05 00 00 20                         |   identifier
class Listing {
 public:
  struct Options {
    bool raw = false;    // with the bytes
    bool types = false;  // with identifiers, classes and notations; so it is with the bytes, too
    support::OutputStyle style = {};
  };

  // `bytes` is the whole file; it must outlive the listing. The lines go to `out`.
  Listing(std::string_view bytes, Options options, support::TextStream& out)
      : bytes_(bytes), options_(options), out_(out) {}

  bool raw() const { return options_.raw; }
  bool types() const { return options_.types || options_.raw; }

  // The first line about a section, or about something else that has several.
  void Title(const std::string& text, compiled::Extent extent = {});

  // A line for what has no bytes of its own, or whose bytes follow piece by piece.
  void Line(const std::string& text);
  void Line(const std::string& text, compiled::Extent extent);
  // One of such pieces, between which it is broken to fit the width; beside bytes it never is.
  void Line(const std::vector<std::string>& pieces);
  // Of a record's pieces, which there are only when bytes are asked for: a line that describes one
  // of them, and one for each of some.
  void Line(const std::string& text, const std::vector<compiled::Piece>& pieces, std::size_t piece);
  void Pieces(const std::string& indent, const std::vector<compiled::Piece>& pieces,
              std::size_t first = 0, std::size_t last = static_cast<std::size_t>(-1));
  void Blank() { out_ += '\n'; }

 private:
  const std::string_view bytes_;
  const Options options_;
  support::TextStream& out_;
};

// The bytes of a file in the JSON form of a dump.
class RawJson {
 public:
  // `bytes` is the whole file; it must outlive this. Without `wanted`, nothing is written.
  RawJson(std::string_view bytes, bool wanted) : bytes_(bytes), wanted_(wanted) {}

  // Adds to the object:
  // "raw": [{"field": name, "offset": number, "size": number, "bytes": hex}, ...]
  void Write(support::JsonObject& json, const std::vector<compiled::Piece>& pieces) const;

 private:
  const std::string_view bytes_;
  const bool wanted_;
};

// The listing. `path` is how the file is called. Of a selection, only the sections are listed.
void ListDebugMeta(const std::string& path, const compiled::DebugMeta& meta,
                   const Selection& selection, Listing& listing);
void ListMeta(const std::string& path, const compiled::CompiledMeta& meta,
              const Selection& selection, Listing& listing);

// The JSON form; docs/dump-json.md says what each member means.
void WriteDebugMetaJson(const std::string& path, const compiled::DebugMeta& meta,
                        const Selection& selection, const RawJson& raw, support::TextStream& out);
void WriteMetaJson(const std::string& path, const compiled::CompiledMeta& meta,
                   const Selection& selection, const RawJson& raw, support::TextStream& out);

// What the dumps of both forms begin with: "board.meta: meta file, format 0x01000000, created ...".
std::string TitleText(const std::string& path, compiled::Form form, std::uint32_t version,
                      std::uint32_t creation_time);
void WriteTitle(support::JsonObject& json, const std::string& path, compiled::Form form,
                std::uint32_t version, std::uint32_t creation_time);

// The same in pieces, between which the line may be broken; and of that, what follows the form:
// "format 0x01000000, created ...".
std::vector<std::string> TitlePieces(const std::string& path, compiled::Form form,
                                     std::uint32_t version, std::uint32_t creation_time);
std::vector<std::string> FormatPieces(std::uint32_t version, std::uint32_t creation_time);

// "form": "meta" or "debug meta"; null for what is neither.
void WriteForm(support::JsonObject& json, compiled::Form form);

}  // namespace rux::inspect

#endif  // INSPECT_DUMP_H_
