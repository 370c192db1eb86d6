#include "driver/baseline.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "driver/overwriting.h"
#include "reader/script.h"
#include "reader/value.h"
#include "ruxcomp/language/entries.h"
#include "settings/baseline.h"
#include "sources/source_file.h"
#include "sources/source_set.h"
#include "support/descriptor.h"
#include "support/failure.h"
#include "support/folders.h"
#include "support/number_text.h"
#include "support/placement.h"
#include "support/safe_text.h"

namespace rux::driver {
namespace {

namespace fs = std::filesystem;
using settings::BaselineCounts;
using settings::BaselineKey;

// What a run notes: records of texts that each end in a NUL byte, which no name has.
constexpr char kEnd = '\0';
enum class NoteKind : char { kFile = 'F', kCompleteFile = 'C', kWarnings = 'W' };

void AppendNote(NoteKind kind, std::initializer_list<std::string_view> texts, std::string& notes) {
  notes += static_cast<char>(kind);
  for (const std::string_view text : texts) notes.append(text).push_back(kEnd);
}

std::string TakeText(std::string_view& notes) {
  const std::size_t end = std::min(notes.find(kEnd), notes.size());
  std::string text(notes.substr(0, end));
  notes.remove_prefix(std::min(end + 1, notes.size()));
  return text;
}

std::string FolderOf(const std::string& file) {
  return fs::path(support::WholeName(file)).parent_path().string();
}

// What JSON cannot have is escaped.
std::string NameFrom(const std::string& folder, const std::string& whole_name) {
  return support::SafeText(fs::path(whole_name).lexically_relative(folder).string());
}

}  // namespace

Baseline::Baseline(BaselineFiles files)
    : files_(std::move(files)),
      known_(files_.read.empty() ? BaselineCounts() : settings::ReadBaseline(files_.read)),
      folder_(FolderOf(files_.read)),
      notes_(files_.written) {
  notes_.AlwaysAppend();
}

std::string Baseline::NameInBaseline(const std::string& whole_name) const {
  return NameFrom(folder_, whole_name);
}

// One write keeps the notes of a process together: all of them append to the file.
void Baseline::Note(std::string_view notes) {
  if (!support::WriteAll(notes_.number(), notes)) {
    throw support::SystemFailure("cannot record", "warnings");
  }
}

// What all runs noted.
struct Baseline::Noted {
  std::set<std::string> files;
  std::map<std::string, std::set<std::string>> complete_files;  // with the scripts that read them
  BaselineCounts found;                                         // by whole names
};

Baseline::Noted Baseline::ReadNotes() {
  Noted noted;
  for (std::string_view notes = notes_.Bytes(); !notes.empty();) {
    const auto kind = static_cast<NoteKind>(notes.front());
    notes.remove_prefix(1);
    BaselineKey key;
    key.script = TakeText(notes);
    if (kind == NoteKind::kFile) noted.files.insert(key.script);
    if (kind == NoteKind::kCompleteFile) noted.complete_files[key.script].insert(TakeText(notes));
    if (kind != NoteKind::kWarnings) continue;
    for (std::string* text : {&key.id, &key.section, &key.name, &key.entry}) {
      *text = TakeText(notes);
    }
    const std::string count = TakeText(notes);
    std::uint64_t number = 0;
    std::from_chars(count.data(), count.data() + count.size(), number);
    std::uint64_t& most = noted.found[key];
    most = std::max(most, number);
  }
  return noted;
}

std::string Baseline::End(const FindMains& find_mains) {
  const Noted noted = ReadNotes();
  if (!files_.written.empty()) Write(noted);
  return files_.written.empty() ? OutdatedText(noted, find_mains) : "";
}

void Baseline::Write(const Noted& noted) const {
  const std::string whole = support::WholeName(files_.written);
  if (noted.files.count(whole) != 0) {
    RefuseToOverwrite({"script", files_.written}, {"baseline", files_.written});
  }
  const std::string folder = FolderOf(files_.written);
  BaselineCounts counts;
  for (const auto& [key, count] : noted.found) {
    BaselineKey named = key;
    named.script = NameFrom(folder, key.script);
    counts[named] = count;
  }
  const std::string text = settings::BaselineText(counts);
  support::PutInPlace({{files_.written, text}});
}

// Counts the entries that did not occur.
class Baseline::Outdated {
 public:
  Outdated(const Baseline& baseline, const Noted& noted, const FindMains& find_mains)
      : baseline_(baseline), noted_(noted), find_mains_(find_mains) {
    for (const auto& [key, count] : noted.found) {
      BaselineKey named = key;
      named.script = baseline.NameInBaseline(key.script);
      found_[named] = count;
    }
    for (const auto& [file, scripts] : noted.complete_files) {
      whole_names_[baseline.NameInBaseline(file)] = file;
    }
  }

  std::uint64_t Count() {
    std::uint64_t outdated = 0;
    for (const auto& [key, count] : baseline_.known_) {
      const auto now = found_.find(key);
      const std::uint64_t left = now == found_.end() ? 0 : now->second;
      if (left < count && IsKnown(key.script)) outdated += count - left;
    }
    return outdated;
  }

 private:
  // Whether all warnings of the file are known: it is gone, or was checked in all that includes it.
  bool IsKnown(const std::string& name) {
    const auto [known, is_new] = is_known_.try_emplace(name);
    if (!is_new) return known->second;
    const auto file = whole_names_.find(name);
    std::error_code ignored;
    known->second = file != whole_names_.end()
                        ? IsCheckedInAll(file->second)
                        : !fs::exists(fs::path(baseline_.folder_) / name, ignored);
    return known->second;
  }

  bool IsCheckedInAll(const std::string& file) const {
    const std::set<std::string>& scripts = noted_.complete_files.at(file);
    std::vector<std::string> mains = find_mains_(file);
    if (mains.empty()) mains = {file};
    return std::all_of(mains.begin(), mains.end(), [&](const std::string& main) {
      return scripts.count(support::WholeName(main)) != 0;
    });
  }

  const Baseline& baseline_;
  const Noted& noted_;
  const FindMains& find_mains_;
  BaselineCounts found_;                            // by names in the baseline
  std::map<std::string, std::string> whole_names_;  // by those in the baseline
  std::map<std::string, bool> is_known_;
};

std::string Baseline::OutdatedText(const Noted& noted, const FindMains& find_mains) const {
  const std::uint64_t outdated = Outdated(*this, noted, find_mains).Count();
  if (outdated == 0) return "";
  return fmt::format("{0}: {1} did not occur; --write-baseline {0} drops {2}\n",
                     support::SafePath(files_.read), support::CountText(outdated, "listed warning"),
                     outdated == 1 ? "it" : "them");
}

BaselineFilter::BaselineFilter(Baseline& baseline, const sources::SourceSet& sources,
                               std::string script)
    : baseline_(baseline), sources_(sources), script_(std::move(script)) {}

bool BaselineFilter::Takes(const diagnostics::Diagnostic& warning) {
  const diagnostics::Location& at = warning.at;
  const sources::Opening* opening = sources_.FirstOpeningOf(at.file);
  const ruxcomp::reader::Section* section = nullptr;
  if (opening != nullptr) section = opening->file->SectionAt(at.file->LineAt(at.range.begin));
  const FileNames& names = NamesOf(opening == nullptr ? script_ : opening->file->path());
  BaselineKey key;
  key.id = warning.row->id;
  if (warning.section) key.section = support::SafeText(*warning.section);
  if (section != nullptr) {
    key.section = support::SafeText(support::Excerpted(section->name));
    key.name = NameOf(*opening->file, *section);
  }
  if (warning.entry) key.entry = support::SafeText(*warning.entry);
  key.script = names.whole;
  const std::uint64_t count = ++found_[key];
  if (!baseline_.files().written.empty()) return true;
  key.script = names.in_baseline;
  const auto known = baseline_.known().find(key);
  return known != baseline_.known().end() && count <= known->second;
}

const BaselineFilter::FileNames& BaselineFilter::NamesOf(const std::string& path) {
  const auto [names, is_new] = names_.try_emplace(path);
  if (is_new) {
    names->second.whole = support::WholeName(path);
    names->second.in_baseline = baseline_.NameInBaseline(names->second.whole);
  }
  return names->second;
}

const std::string& BaselineFilter::NameOf(const sources::SourceFile& file,
                                          const ruxcomp::reader::Section& section) {
  using ruxcomp::language::ENTRY_NAME;
  const auto [name, is_new] = section_names_.try_emplace({&file, section.line});
  if (!is_new) return name->second;
  const ruxcomp::reader::Item* end = section.items + section.item_count;
  const auto* item = std::find_if(section.items, end, [](const ruxcomp::reader::Item& each) {
    return each.key == ruxcomp::language::KeywordOf(ENTRY_NAME);
  });
  if (item != end) {
    name->second = support::SafeText(support::Excerpted(ruxcomp::reader::FirstPart(*item)));
  }
  return name->second;
}

void BaselineFilter::Note(const std::vector<std::string>& files, bool is_complete) {
  std::string notes;
  for (const std::string& file : files) {
    const std::string& whole = NamesOf(file).whole;
    AppendNote(NoteKind::kFile, {whole}, notes);
    if (is_complete) AppendNote(NoteKind::kCompleteFile, {whole, NamesOf(script_).whole}, notes);
  }
  for (const auto& [key, count] : found_) {
    AppendNote(NoteKind::kWarnings,
               {key.script, key.id, key.section, key.name, key.entry, std::to_string(count)},
               notes);
  }
  baseline_.Note(notes);
}

}  // namespace rux::driver
