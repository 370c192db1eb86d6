// Prints a dictionary for libFuzzer: what stands in scripts, in meta files or in debug meta files.
#include <cctype>
#include <cstdio>
#include <string>
#include <string_view>

#include "backend/meta_format.h"
#include "backend/words.h"
#include "debugmeta/meta_d_format.h"
#include "frontend/identifiers.h"
#include "ruxcomp/data.h"
#include "ruxcomp/identifiers.h"

namespace {

void Print(std::string_view token) {
  if (token.empty()) return;
  std::string quoted;
  for (const char c : token) {
    const auto byte = static_cast<unsigned char>(c);
    char text[sizeof "\\xFF"] = {c};
    if (!std::isprint(byte) || c == '"' || c == '\\') {
      std::snprintf(text, sizeof text, "\\x%02X", unsigned{byte});
    }
    quoted += text;
  }
  std::printf("\"%s\"\n", quoted.c_str());
}

void Print(std::uint32_t word) {
  std::string bytes;
  AppendWord(bytes, word);
  Print(bytes);
}

void PrintScriptTokens() {
  for (std::uint32_t i = 0; i < g_dwNTMSect; ++i) {
    Print("\n[" + std::string(g_NTMapSect[i].keyword) + "]\n");
  }
  for (std::uint32_t i = 0; i < g_dwNTMEntry; ++i) Print(g_NTMapEntry[i].keyword);
#define OPERATOR(text, code) Print(text);
#include "ruxcomp/operators.def"
  for (const char* token : {"BUSTYPE_SMBUS", "BUSTYPE_SIMPLEIOPORT", "ARG", "ARG0x", "0x", "= ",
                            ",", "\\\n", "\"", "\n----\n", " # "}) {
    Print(token);
  }
}

void PrintMetaTokens() {
  Print({meta_format::kMagic, sizeof meta_format::kMagic});
  Print(RUX_VERSION);
#define SECTION(keyword, kind, notation) Print(RUX_SECT_##keyword);
#include "ruxcomp/sections.def"
#define FIXED_ENTRY(name, keyword, identifier, compiled) Print(RUX_ENTRY_##name);
#define NAMED_ENTRY(name, keyword, identifier, table, prefix)
#define PLAIN_ENTRY(name, keyword, identifier)
#include "ruxcomp/entries.def"
#define SYMBOL_TABLE(name, class_byte, key) Print(RUX_CLASS_##name);
#include "ruxcomp/symbol_tables.def"
  for (const std::uint32_t base :
       {RUX_CLASS_TableData, RUX_CLASS_Small, RUX_CLASS_ValueType, RUX_CLASS_Operator}) {
    Print(base);
  }
}

void PrintDebugMetaTokens() {
  Print({meta_d_format::kMagic, sizeof meta_d_format::kMagic});
  Print(RUXD_VERSION);
  for (std::uint32_t i = 0; i < g_dwNTMSect; ++i) Print(g_NTMapSect[i].identifier);
  for (std::uint32_t i = 0; i < g_dwNTMEntry; ++i) Print(g_NTMapEntry[i].identifier);
}

}  // namespace

int main(int count, char** arguments) {
  const std::string_view of = count > 1 ? arguments[1] : "";
  if (of == "script") PrintScriptTokens();
  if (of == "meta") PrintMetaTokens();
  if (of == "debug_meta") PrintDebugMetaTokens();
}
