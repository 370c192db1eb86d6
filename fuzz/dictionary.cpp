// Prints a dictionary for libFuzzer: words of scripts, of meta files, of debug meta files, of files
// of settings, of messages of an editor, of lists of sensors or of machines in other forms.
#include <cctype>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

#include "frontend/identifiers.h"  // IWYU pragma: keep
#include "ruxcomp/data.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/file_format.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/language/values.h"
#include "ruxcomp/language/words.h"

using namespace ruxcomp::core;

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
  for (const Operator& row : kOperators) Print(row.text);
  for (const std::string_view token : {kSmbus, kSimpleIoPort, kArgumentPrefix}) Print(token);
  for (const char* token : {"ARG0x", "0x", "= ", ",", "\\\n", "\"", "\n----\n", " # "}) {
    Print(token);
  }
}

void PrintMetaTokens() {
  Print({meta_format::kMagic, sizeof meta_format::kMagic});
  Print(RUX_VERSION);
  for (const SectionKind& kind : kSectionKinds) Print(kind.compiled);
  for (const EntryRow& row : kEntries) {
    if (row.compiled != 0) Print(row.compiled);
  }
  for (const Block& block : kBlocks) Print(block.base);
  for (const std::uint32_t base : {CLASS_Small, CLASS_ValueType, CLASS_Operator}) {
    Print(base);
  }
}

void PrintDebugMetaTokens() {
  Print({debug_meta_format::kMagic, sizeof debug_meta_format::kMagic});
  Print(RUXD_VERSION);
  for (std::uint32_t i = 0; i < g_dwNTMSect; ++i) Print(g_NTMapSect[i].identifier);
  for (std::uint32_t i = 0; i < g_dwNTMEntry; ++i) Print(g_NTMapEntry[i].identifier);
}

void PrintSettingsTokens() {
  for (const char* token : {"\"warnings\":",
                            "\"include_folders\":",
                            "\"main_scripts\":",
                            "\"limits\":",
                            "\"divisor\":",
                            "\"sign\": \"signed\"",
                            "\"$schema\":",
                            "\"schema\":1",
                            "\"script\":",
                            "\"id\":",
                            "\"section\":",
                            "\"name\":",
                            "\"entry\":",
                            "\"count\":",
                            "\"loss\"",
                            "[",
                            "]",
                            "{",
                            "}",
                            ",",
                            "null",
                            "true",
                            "\\u0000"}) {
    Print(token);
  }
}

void PrintMessageTokens() {
  for (const char* token : {"Content-Length: ",
                            "content-length:2",
                            "Content-Type: x",
                            "\r\n",
                            "\r\n\r\n",
                            "\r",
                            "\n",
                            "\"jsonrpc\":\"2.0\"",
                            "\"id\":1",
                            "\"method\":\"x\"",
                            "\"params\":",
                            "\"result\":null",
                            "{",
                            "}",
                            "[",
                            "]",
                            "\xC3\xA9",
                            "\xE2\x82\xAC",
                            "\xF0\x9F\x98\x80",
                            "\xFF",
                            "\\ud83d"}) {
    Print(token);
  }
}

void PrintListTokens() {
  for (const char* token : {"NAME",
                            ",",
                            ";",
                            " | ",
                            "\"",
                            "\"\"",
                            "\r\n",
                            "\xEF\xBB\xBF",
                            "ID,Name,Type",
                            ",ok\n",
                            "{",
                            "}",
                            "[",
                            "]",
                            "\"Name\":\"x\"",
                            "\"Reading\":1",
                            "\"Thresholds\":{\"UpperCritical\":{\"Reading\":1.5}}",
                            "\"@odata.id\":\"x\"",
                            "\"temp1_max\":-2.5",
                            "\"x\":{"}) {
    Print(token);
  }
}

void PrintImportTokens() {
  for (const char* token :
       {"chip \"it87-*\"\n", "label in0 \"A\"\n", "compute in0 @*2, @/2\n", "set in0_max ",
        "ignore in0\n", "bus \"i2c-0\" \"x\"\n", "\\\n", "(6.8/10)", "Section 1_A\n",
        "EndSection\n", "Upper_Critical_Threshold 1.5\n", "## units; units = Volts\n",
        "{\"Name\":\"A\",\"Exposes\":[", "\"Thresholds\":[", "\xD0\x0D\xFE\xED", "compatible",
        "ti,tmp421", "iio-hwmon", "NAME,THRESHOLD_FH\n"}) {
    Print(token);
  }
}

}  // namespace

int main(int count, char** arguments) {
  const std::string_view of = count > 1 ? arguments[1] : "";
  if (of == "script") PrintScriptTokens();
  if (of == "meta") PrintMetaTokens();
  if (of == "debug_meta") PrintDebugMetaTokens();
  if (of == "settings") PrintSettingsTokens();
  if (of == "messages") PrintMessageTokens();
  if (of == "lists") PrintListTokens();
  if (of == "import") PrintImportTokens();
}
