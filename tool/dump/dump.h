// The whole of a compiled file, for people and for programs.
#ifndef TOOL_DUMP_DUMP_H_
#define TOOL_DUMP_DUMP_H_

#include <cstdint>
#include <string>

#include "tool/compiled/debug_meta.h"
#include "tool/compiled/file_header.h"
#include "tool/compiled/meta.h"
#include "tool/dump/listing.h"
#include "tool/dump/raw_json.h"
#include "tool/text/json_text.h"

namespace rux {

// For people. `path` is how the file is called.
void ListDebugMeta(const std::string& path, const DebugMeta& meta, Listing& listing);
void ListMeta(const std::string& path, const CompiledMeta& meta, Listing& listing);

// For programs; docs/dump-json.md tells what each member means.
std::string DebugMetaJson(const std::string& path, const DebugMeta& meta, const RawJson& raw);
std::string MetaJson(const std::string& path, const CompiledMeta& meta, const RawJson& raw);

// What the dumps of both forms begin with: "board.meta: meta file, format 0x01000000, created ...".
std::string TitleText(const std::string& path, Form form, std::uint32_t version,
                      std::uint32_t creation_time);
void WriteTitle(JsonWriter& json, const std::string& path, Form form, std::uint32_t version,
                std::uint32_t creation_time);

// Of that, what is behind the form: "format 0x01000000, created ...".
std::string OriginText(std::uint32_t version, std::uint32_t creation_time);

// "form": "meta" or "debug meta"; null for what is neither.
void WriteForm(JsonWriter& json, Form form);

}  // namespace rux

#endif  // TOOL_DUMP_DUMP_H_
