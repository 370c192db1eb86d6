// What the dumps of both forms share: lines with bytes beside them, bytes in JSON, the title.
#include "inspect/dump.h"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <string>
#include <utility>
#include <vector>

#include "inspect/entry_value.h"
#include "ruxcomp/file/header.h"
#include "ruxcomp/file/views.h"
#include "support/json.h"
#include "support/safe_text.h"
#include "support/terminal.h"
#include "support/wrap.h"

namespace rux::inspect {
namespace {

constexpr std::size_t kMostShown = 12;  // bytes in a line

// The columns to the left of the text.
constexpr char kColumns[] = "{:<45}{:<2} | {}\n";

}  // namespace

void Listing::Title(const std::string& text, compiled::Extent extent) {
  const std::string title = support::Bold(text, options_.style.uses_colour);
  return extent.size == 0 ? Line(title) : Line(title, extent);
}

void Listing::Line(const std::string& text) {
  out_ += raw() ? fmt::format(kColumns, "", "", text) : text + '\n';
}

void Listing::Line(const std::vector<std::string>& pieces) {
  constexpr std::size_t kIndent = 6;
  Line(support::WrappedLine(pieces, raw() ? support::kEndless : options_.style.width, kIndent));
}

void Listing::Line(const std::string& text, compiled::Extent extent) {
  if (!raw()) return Line(text);
  const std::string shown =
      fmt::format("{:08X}:", extent.offset) +
      support::Hex(bytes_.substr(extent.offset, std::min(extent.size, kMostShown)), " ");
  const bool is_cut = extent.size > kMostShown;
  const std::string size = is_cut ? fmt::format("  ({} bytes)", extent.size) : "";
  out_ += fmt::format(kColumns, shown, is_cut ? ".." : "", text + size);
}

void Listing::Line(const std::string& text, const std::vector<compiled::Piece>& pieces,
                   std::size_t piece) {
  Line(text, raw() ? pieces[piece].extent : compiled::Extent());
}

void Listing::Pieces(const std::string& indent, const std::vector<compiled::Piece>& pieces,
                     std::size_t first, std::size_t last) {
  for (std::size_t i = first; i < std::min(last, pieces.size()); ++i) {
    Line(indent + pieces[i].name, pieces[i].extent);
  }
}

void RawJson::Write(support::JsonObject& json, const std::vector<compiled::Piece>& pieces) const {
  if (!wanted_) return;
  json.Objects("raw", pieces, [&](support::JsonObject& raw, const compiled::Piece& piece) {
    raw.Member("field", piece.name);
    raw.Member("offset", piece.extent.offset);
    raw.Member("size", piece.extent.size);
    raw.Member("bytes", support::Hex(bytes_.substr(piece.extent.offset, piece.extent.size)));
  });
}

std::string TitleText(const std::string& path, compiled::Form form, std::uint32_t version,
                      std::uint32_t creation_time) {
  return support::WrappedLine(TitlePieces(path, form, version, creation_time), support::kEndless,
                              0);
}

std::vector<std::string> TitlePieces(const std::string& path, compiled::Form form,
                                     std::uint32_t version, std::uint32_t creation_time) {
  std::vector<std::string> pieces = {support::SafePath(path) + ":",
                                     std::string(compiled::FormName(form)) + ","};
  for (std::string& piece : FormatPieces(version, creation_time)) {
    pieces.push_back(std::move(piece));
  }
  return pieces;
}

std::vector<std::string> FormatPieces(std::uint32_t version, std::uint32_t creation_time) {
  return {fmt::format("format 0x{:08X},", version),
          fmt::format("created {:%Y-%m-%d %H:%M:%S} UTC",
                      fmt::gmtime(static_cast<std::time_t>(creation_time)))};
}

void WriteTitle(support::JsonObject& json, const std::string& path, compiled::Form form,
                std::uint32_t version, std::uint32_t creation_time) {
  json.Schema(1);
  WriteForm(json, form);
  WriteText(json, "file", path);
  json.Member("version", version);
  json.Member("created", creation_time);
}

void WriteForm(support::JsonObject& json, compiled::Form form) {
  if (form == compiled::Form::kNone) return json.Member("form", nullptr);
  json.Member("form", form == compiled::Form::kMeta ? "meta" : "debug meta");
}

}  // namespace rux::inspect
