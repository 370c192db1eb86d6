#include <algorithm>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "diagnostics/severities.h"
#include "diff/classes.h"
#include "diff/selection.h"
#include "driver/messages.h"
#include "ruxcomp/language/sections.h"
#include "table/columns.h"
#include "tool/command.h"
#include "tool/command_line.h"
#include "tool/completion/completion.h"

namespace rux::tool {
namespace {

constexpr char kFile[] = "FILE";
constexpr char kMachine[] = "MACHINE";  // a compiled file, or a script
constexpr char kDebugMeta[] = "METAD";

Candidates Words(std::vector<Candidate> words) { return {std::move(words), false, {}}; }

// The extensions of files that the help calls by that name.
std::vector<std::string> ExtensionsOf(const CommandArgument& argument) {
  if (argument.value_name == "SCRIPT") return {".rux"};
  if (argument.value_name == "META") return {".meta"};
  if (argument.value_name == kDebugMeta) return {".metad"};
  const std::string& name = argument.value_name;
  if (name == "OLD" || name == "NEW" || name == kMachine) return {".rux", ".meta", ".metad"};
  // What an option calls a FILE is any file; without an option, it is a compiled one of either
  // form.
  if (argument.value_name == kFile && !argument.is_option()) return {".meta", ".metad"};
  return {};
}

// The file that was given under that name. Null for all but regular files: a pipe would be waited
// for.
const std::string* FindFile(const GivenValues& given, const char* name) {
  for (const auto& [other, path] : given) {
    std::error_code ignored;
    if (other == name && std::filesystem::is_regular_file(path, ignored)) return &path;
  }
  return nullptr;
}

Candidates CommandNames(const GivenValues&, const std::string&) {
  std::vector<Candidate> names;
  for (const Command& command : Commands()) names.push_back({command.name, command.help});
  return Words(std::move(names));
}

Candidates Kinds(const GivenValues& given, const std::string&) {
  const std::string* file = FindFile(given, kFile);
  return file == nullptr ? Candidates() : Words(KindWords(*file));
}

Candidates Paths(const GivenValues& given, const std::string& typed) {
  for (const char* name : {kFile, kMachine}) {
    if (const std::string* file = FindFile(given, name)) return Words(PathWords(*file, typed));
  }
  const std::string* debug_meta = FindFile(given, kDebugMeta);
  return debug_meta == nullptr ? Candidates() : Words(DebugMetaPathWords(*debug_meta, typed));
}

Candidates Names(const GivenValues& given, const std::string& typed) {
  const std::string* file = FindFile(given, kMachine);
  return file == nullptr ? Candidates() : Words(NameWords(*file, typed));
}

// Categories and classes.
std::vector<Candidate> ChangeWords() {
  std::vector<Candidate> words;
  for (const std::string_view category : diff::kCategoryWords)
    words.push_back({std::string(category), "category"});
  for (const diff::ClassRow& row : diff::kClasses)
    words.push_back({std::string(row.message->id), std::string(row.message->summary)});
  return words;
}

Candidates UnacceptedChanges(const GivenValues&, const std::string&) {
  std::vector<Candidate> words = ChangeWords();
  words.push_back({diff::kAnyClass, "all classes"});
  return Words(std::move(words));
}

// The NAMEs of sections are left to the user: they may be those of either machine.
Candidates ReportedChanges(const GivenValues&, const std::string&) {
  std::vector<Candidate> words = ChangeWords();
  for (const ruxcomp::language::SectionKind& kind : ruxcomp::language::kSectionKinds)
    words.push_back({kind.keyword, "kind"});
  return Words(std::move(words));
}

// The columns of the table that is given, after `front` and before `rest`.
Candidates Columns(const GivenValues& given, const std::string& front, const char* rest) {
  const auto is_kind = [](const auto& value) { return value.first == "--kind"; };
  const auto chosen = std::find_if(given.begin(), given.end(), is_kind);
  const ruxcomp::language::SectionKind* kind =
      ruxcomp::language::FindKind(chosen == given.end() ? "SENSOR" : chosen->second);
  std::vector<Candidate> words;
  if (kind == nullptr) return {};
  for (const std::string& column : table::ColumnNames(*kind))
    words.push_back({front + column + rest, ""});
  return Words(std::move(words));
}

Candidates ColumnLists(const GivenValues& given, const std::string& typed) {
  return Columns(given, typed.substr(0, typed.rfind(',') + 1), "");
}

Candidates ColumnsWithValues(const GivenValues& given, const std::string&) {
  return Columns(given, "", "=");
}

Candidates MessageIds(const GivenValues&, const std::string&) {
  std::vector<Candidate> ids;
  for (const diagnostics::MessageRow* row : driver::AllMessages().rows()) {
    ids.push_back({std::string(row->id), std::string(row->summary)});
  }
  return Words(std::move(ids));
}

Candidates Settings(const GivenValues&, const std::string&) {
  std::vector<Candidate> settings;
  for (const diagnostics::SeveritySetting& setting :
       diagnostics::SeveritySettings(driver::AllMessages())) {
    settings.push_back({setting.text, std::string(setting.about)});
  }
  return Words(std::move(settings));
}

// What commands take that is neither a file nor one of a few words. Whoever adds an argument of
// another name adds a row.
struct Vocabulary {
  const char* argument;
  Candidates (*candidates)(const GivenValues& given, const std::string& typed);
};
constexpr Vocabulary kVocabularies[] = {
    {"COMMAND", CommandNames},
    {"KIND", Kinds},
    {"PATH", Paths},
    {"NAME", Names},
    {"ID", MessageIds},
    {"WHAT", Settings},
    {"CATEGORY|ID", UnacceptedChanges},
    {"KIND|NAME|CATEGORY|ID", ReportedChanges},
    {"COLUMN,...", ColumnLists},
    {"CONDITION", ColumnsWithValues},
    {"COLUMN=NAME", ColumnsWithValues},
    {"COLUMN=AMOUNT", ColumnsWithValues},
    {"COLUMN=UNIT", ColumnsWithValues},
};

}  // namespace

Candidates CandidatesFor(const CommandArgument& argument, const GivenValues& given,
                         const std::string& typed) {
  if (argument.is_file) return {{}, true, ExtensionsOf(argument)};
  std::vector<Candidate> choices;
  choices.reserve(argument.choices.size());
  for (const std::string& choice : argument.choices) choices.push_back({choice, ""});
  if (!choices.empty()) return Words(std::move(choices));
  for (const Vocabulary& vocabulary : kVocabularies) {
    if (argument.value_name == vocabulary.argument) return vocabulary.candidates(given, typed);
  }
  return {};
}

}  // namespace rux::tool
