// A whole compile run: a script with its included files to a meta file and a debug meta file, which
// must load, and which the decoders, who know nothing of the library, must accept. A second run in
// the same process must say the same, and the decompiled script must mean the same.
//
// An input is one file or several, with a line "----" between them. The first is the script, the
// others can be included as 1, 2.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "backend/symbol_tables.h"
#include "compiled/debug_meta.h"
#include "compiled/meta.h"
#include "decompile/decompile.h"
#include "fuzz/library_state.h"
#include "fuzz/loaded.h"
#include "fuzz/target.h"
#include "query/process_state.h"
#include "ruxcomp/compile.h"
#include "ruxcomp/debug.h"
#include "ruxcomp/file/fault.h"
#include "ruxcomp/query.h"
#include "tests/support/temp_folder.h"

using namespace ruxcomp::core;

namespace {

using fuzz::Expect;

constexpr char kScript[] = "0";
constexpr char kMeta[] = "meta";
constexpr char kDebugMeta[] = "metad";

// Every include reads its file anew: with more files that include each other, a short input takes
// hours, and with many includes, one run takes the time of hundreds.
constexpr int kMostFiles = 3;
constexpr int kMostIncludes = 12;

bool IncludesTooMuch(std::string_view input) {
  constexpr std::string_view kKey = "FILE";
  int count = 0;
  for (std::size_t at = input.find(kKey); at != std::string_view::npos;
       at = input.find(kKey, at + kKey.size())) {
    ++count;
  }
  return count > kMostIncludes;
}

void WriteFiles(const TempFolder& folder, std::string_view input) {
  constexpr std::string_view kSeparator = "\n----\n";
  for (int i = 0; i < kMostFiles; ++i) {
    const std::size_t end = input.find(kSeparator);
    std::filesystem::remove(folder / std::to_string(i));
    if (i == 0 || !input.empty()) folder.Write(std::to_string(i), input.substr(0, end));
    input.remove_prefix(end == std::string_view::npos ? input.size() : end + kSeparator.size());
  }
}

// What came of a compile run: its files, empty when not written, and what was said up to the end of
// the checks.
struct Outcome {
  std::string meta;
  std::string debug_meta;
  fuzz::Messages messages;
};

Outcome Compile(const TempFolder& folder) {
  Outcome outcome;
  fuzz::TakeMessages();
  Expect(gccCompStart(folder.ScriptPath(kScript)) == 1, "a script that is there can be opened");
  try {
    gccParse();
    const bool is_valid = gccCheck() != 0;
    outcome.messages = fuzz::TakeMessages();
    if (is_valid) {
      Expect(gccOutput(folder / kMeta) == 1, "a valid script can be compiled");
      outcome.meta = folder.Read(kMeta);
    }
    Expect(gccOutputD(folder / kDebugMeta) == 1, "every script has a debug meta file");
    outcome.debug_meta = folder.Read(kDebugMeta);
  } catch (const std::out_of_range&) {
    outcome.messages = fuzz::TakeMessages();  // a number without a digit
  }
  gccCompEnd();
  return outcome;
}

void ExpectSound(const rux::compiled::Faults& faults) {
  if (!faults.empty())
    std::fprintf(stderr, "%s\n", rux::compiled::FaultText(faults.list().front()).c_str());
  Expect(faults.empty(), "what the library writes is sound");
}

rux::compiled::DebugMeta DecodeSound(const std::string& debug_meta) {
  rux::compiled::Faults faults;
  rux::compiled::DebugMeta meta = rux::compiled::DecodeDebugMeta(debug_meta, faults);
  ExpectSound(faults);
  return meta;
}

// Whether some name has no index, like a P_ name of a PELMGROUP. The length of its table counts it,
// but it is not written: when the name is long, the length goes beyond the end of the file.
bool HasNamesWithoutIndex() {
  for (const SymbolTable& row : kSymbolTables) {
    const auto* table = std::get_if<StringTable*>(&row.table);
    if (!table) continue;
    for (const auto& [name, index] : **table) {
      if (index == 0) return true;
    }
  }
  return false;
}

// To be called when the symbol tables are those of the compile run.
void CheckMeta(const TempFolder& folder, const Outcome& outcome) {
  rux::compiled::Faults faults;
  const rux::compiled::CompiledMeta meta = rux::compiled::DecodeMeta(outcome.meta, faults);
  if (!faults.empty() && HasNamesWithoutIndex()) return;
  ExpectSound(faults);
  Expect(gcInit(folder / kMeta) == 1, "what the library writes can be loaded");
  fuzz::ExpectLoaded(meta);
  gcUnInit();
}

void CheckDebugMeta(const TempFolder& folder, const Outcome& outcome) {
  const rux::compiled::DebugMeta meta = DecodeSound(outcome.debug_meta);
  if (!fuzz::CanBeLoaded(meta)) return;
  Expect(gdInit(folder / kDebugMeta) == 1, "what the library writes can be loaded");
  fuzz::ExpectLoaded(meta);
  gdUnInit();
}

// A run after the first in one process: what that leaves behind must not change what is said.
void CompileAgain(const TempFolder& folder, const Outcome& first) {
  const Outcome second = Compile(folder);
  Expect(second.messages == first.messages, "a second run says the same");
  Expect(second.meta.empty() == first.meta.empty(), "a second run ends the same");
  if (!second.meta.empty()) CheckMeta(folder, second);
}

// The script that a debug meta file was made of, in one file; empty when one cannot say it.
std::string Decompiled(const std::string& debug_meta) {
  rux::decompile::KeptScript kept = rux::decompile::KeptScriptOf(DecodeSound(debug_meta));
  if (rux::decompile::GroupBeforeParent(kept.meta)) return "";
  Expect(!rux::decompile::MisreadItem(kept), "what came out of a script can be written in one");
  return std::move(kept.text);
}

std::string WithoutTime(std::string meta) {
  constexpr std::size_t kTimeOffset = 20;
  return meta.replace(kTimeOffset, sizeof(std::uint32_t), sizeof(std::uint32_t), '\0');
}

// Decompiling a valid script and compiling it again changes nothing.
void CompileDecompiled(const TempFolder& folder, const Outcome& first) {
  const std::string script = Decompiled(first.debug_meta);
  if (script.empty()) return;
  ruxcomp::core::ResetProcessState();
  folder.Write(kScript, script);
  const Outcome second = Compile(folder);
  Expect(!second.meta.empty(), "a decompiled script is valid");
  Expect(WithoutTime(second.meta) == WithoutTime(first.meta),
         "a decompiled script compiles to the same meta file");
  Expect(Decompiled(second.debug_meta) == script, "a decompiled script decompiles to itself");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const TempFolder folder;
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  // Includes stay in the folder.
  if (input.find("..") != std::string_view::npos || IncludesTooMuch(input)) return 0;
  WriteFiles(folder, input);
  const Outcome outcome = Compile(folder);
  if (!outcome.meta.empty()) CheckMeta(folder, outcome);
  if (!outcome.debug_meta.empty()) CheckDebugMeta(folder, outcome);
  CompileAgain(folder, outcome);
  if (!outcome.meta.empty()) CompileDecompiled(folder, outcome);
  ruxcomp::core::ResetProcessState();
  return 0;
}
