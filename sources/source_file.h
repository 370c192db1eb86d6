// A script file as the reader scanned it, with its lines.
#ifndef SOURCES_SOURCE_FILE_H_
#define SOURCES_SOURCE_FILE_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "reader/script.h"
#include "support/text_file.h"

namespace rux::sources {

// What begins on a line: an item of a section, or the section's header.
struct SourceSpot {
  const ruxcomp::reader::Section* section;
  const ruxcomp::reader::Item* item;  // null: the header
};

class SourceFile : public support::TextFile {
 public:
  SourceFile(std::string library_path, std::string path,
             std::shared_ptr<ruxcomp::reader::Script> script)
      : library_path_(std::move(library_path)),
        path_(std::move(path)),
        script_(std::move(script)) {}

  const std::string& library_path() const { return library_path_; }  // as the library was given it
  const std::string& path() const override { return path_; }
  const std::string& text() const { return script_->text(); }
  // Scanned again after a drop.
  const std::vector<ruxcomp::reader::Section>& sections() const {
    if (is_dropped_) ScanAgain();
    return script_->sections();
  }
  void DropSections() const;

  std::uint32_t line_count() const { return script_->line_count(); }
  std::uint32_t LineAt(std::size_t offset) const override { return script_->LineAt(offset); }
  std::uint32_t LineStart(std::uint32_t line) const override { return script_->LineStart(line); }
  // Empty for lines that the file does not have.
  std::string_view Line(std::uint32_t line) const override;

  // The line with those that backslashes join to it: from the first of them to the end of the last.
  support::ByteRange JoinedLines(std::uint32_t line) const;

  // The item or header that begins on the line.
  std::optional<SourceSpot> At(std::uint32_t line) const;
  // The section that the line is in; null above the first one.
  const ruxcomp::reader::Section* SectionAt(std::uint32_t line) const;

  // Where a name, a header, a key, a value or a part of one is.
  support::ByteRange RangeOf(std::string_view view) const;
  // What begins on the line: the key of an item, a header, else the text of the line.
  support::ByteRange RangeAt(std::uint32_t line) const;
  // The line without the blanks around it.
  support::ByteRange RangeOfLine(std::uint32_t line) const;

 private:
  void ScanAgain() const;

  const std::string library_path_;
  const std::string path_;
  const std::shared_ptr<ruxcomp::reader::Script> script_;
  mutable bool is_dropped_ = false;
};

// The name under which the reader finds the file of one of the library's paths.
std::string ToOpenablePath(const std::string& library_path);

// The same for people and for services that know files by one name: without "." and, where no link
// makes a difference, without "..".
std::string ToShownPath(const std::string& library_path);

}  // namespace rux::sources

#endif  // SOURCES_SOURCE_FILE_H_
