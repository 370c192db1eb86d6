// From what a message says of its place to the place itself.
#ifndef DIAGNOSTICS_LOCATOR_H_
#define DIAGNOSTICS_LOCATOR_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "diagnostics/source_line.h"
#include "sources/source_view.h"

namespace rux::diagnostics {

// Locates the diagnostics of one run of one script, in their order: the k-th of some messages is
// the k-th of the sections that may have given it.
class Locator {
 public:
  // `script`: the path that the library was given. `read_from`: where its text is; empty: there.
  explicit Locator(std::string script, std::string read_from = {})
      : script_(std::move(script)), read_from_(std::move(read_from)) {}

  // Fills in where the diagnostic stands and which INCLUDEs lead there. The texts of excerpts are
  // the locator's.
  void Locate(Diagnostic& diagnostic);

  // A line of a source, with what is meant in it underlined.
  Location LocationOf(const sources::SourceFile& file, std::uint32_t line, const Meant& meant);

  const std::string& script() const { return script_; }

  // The sources, read when they are first asked for. Dropping them leaves excerpts without texts:
  // do it before anything is located.
  const sources::SourceView& sources();
  void DropSources() { sources_.reset(); }

  // The file that the diagnostic most likely is about; null when it cannot be read again.
  const sources::SourceFile* FileOf(const Diagnostic& diagnostic);

 private:
  // Sections and how many of them have been handed out.
  struct Queue {
    std::vector<sources::SourceSection> sections;
    std::size_t next = 0;
  };

  std::vector<Note> IncludesOf(const sources::SourceFile& file);
  std::optional<sources::SourcePlace> Find(const Diagnostic& diagnostic);
  SourceLine& LineOf(const sources::SourceFile& file, std::uint32_t line);
  std::size_t CountAlike(const Diagnostic& diagnostic, const sources::SourcePlace& place);
  static std::optional<sources::SourcePlace> TakeNext(Queue& queue);
  Queue& UnknownSections();
  Queue& SectionsWithout(const std::string& section, const std::string& entry);

  const std::string script_;
  const std::string read_from_;
  std::optional<sources::SourceView> sources_;
  std::unique_ptr<SourceLine> line_;  // the last one looked at that is short
  std::map<std::pair<const sources::SourceFile*, std::uint32_t>, std::unique_ptr<SourceLine>>
      long_lines_;
  // Of the line that was located last: how often each id was told of what it mentions first.
  std::optional<sources::SourcePlace> last_place_;
  std::map<std::pair<MessageId, std::string>, std::size_t> alike_;
  std::unique_ptr<Queue> unknown_sections_;
  std::map<std::pair<std::string, std::string>, Queue> sections_without_;  // section name and key
};

}  // namespace rux::diagnostics

#endif  // DIAGNOSTICS_LOCATOR_H_
