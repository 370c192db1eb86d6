// The whole of a compiled file, as a listing and as JSON.
#ifndef INSPECT_DUMP_H_
#define INSPECT_DUMP_H_

#include <cstdint>
#include <string>

#include "compiled/debug_meta.h"
#include "compiled/file.h"
#include "compiled/meta.h"
#include "inspect/listing.h"
#include "inspect/raw_json.h"
#include "support/json.h"
#include "support/text_stream.h"

namespace rux::inspect {

// The listing. `path` is how the file is called.
void ListDebugMeta(const std::string& path, const compiled::DebugMeta& meta, Listing& listing);
void ListMeta(const std::string& path, const compiled::CompiledMeta& meta, Listing& listing);

// The JSON form; docs/dump-json.md says what each member means.
void WriteDebugMetaJson(const std::string& path, const compiled::DebugMeta& meta,
                        const RawJson& raw, support::TextStream& out);
void WriteMetaJson(const std::string& path, const compiled::CompiledMeta& meta, const RawJson& raw,
                   support::TextStream& out);

// What the dumps of both forms begin with: "board.meta: meta file, format 0x01000000, created ...".
std::string TitleText(const std::string& path, compiled::Form form, std::uint32_t version,
                      std::uint32_t creation_time);
void WriteTitle(support::JsonObject& json, const std::string& path, compiled::Form form,
                std::uint32_t version, std::uint32_t creation_time);

// Of that, what follows the form: "format 0x01000000, created ...".
std::string FormatText(std::uint32_t version, std::uint32_t creation_time);

// "form": "meta" or "debug meta"; null for what is neither.
void WriteForm(support::JsonObject& json, compiled::Form form);

}  // namespace rux::inspect

#endif  // INSPECT_DUMP_H_
