// A compiled file of either form for reading, in the words of a script's author, and what is at a
// path.
#ifndef INSPECT_FILE_VIEW_H_
#define INSPECT_FILE_VIEW_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "compiled/file.h"
#include "compiled/meta.h"
#include "inspect/entry_value.h"
#include "inspect/path.h"
#include "ruxcomp/language/sections.h"

namespace rux::inspect {

using ruxcomp::language::SectionKind;

// What a section is called.
struct SectionLabel {
  std::size_t ordinal;  // among those of its kind
  std::optional<std::string> name;
  std::optional<std::uint32_t> id;
};

struct KeyedValue {
  std::string key;  // as a script writes it in such a section
  EntryValue value;
};

// What a path leads to: a section, one of its entries, or a part of that entry.
struct Found {
  const SectionKind* kind;
  std::size_t ordinal;
  std::optional<KeyedValue> entry = {};
  std::optional<EntryPart> part = {};
};

class FileView {
 public:
  virtual ~FileView() = default;
  FileView(const FileView&) = delete;
  FileView& operator=(const FileView&) = delete;

  const std::string& path() const { return path_; }
  virtual compiled::Form form() const = 0;
  virtual std::uint32_t version() const = 0;
  virtual std::uint32_t creation_time() const = 0;

  // The kind of that keyword, in any case. Throws a Failure that names the kinds near it.
  virtual const SectionKind& ExpectKind(const std::string& keyword) const = 0;

  // The sections of a kind, in file order. The source file of one is empty where the file does not
  // know it.
  virtual std::size_t CountOf(const SectionKind& kind) const = 0;
  virtual SectionLabel LabelOf(const SectionKind& kind, std::size_t ordinal) const = 0;
  virtual std::vector<std::string> KeysOf(const SectionKind& kind, std::size_t ordinal) const = 0;
  virtual std::vector<KeyedValue> EntriesOf(const SectionKind& kind, std::size_t ordinal) const = 0;
  // None when the section does not have the key.
  virtual std::optional<EntryValue> EntryOf(const SectionKind& kind, std::size_t ordinal,
                                            const std::string& key) const = 0;
  virtual std::string SourceFileOf(const SectionKind& kind, std::size_t ordinal) const = 0;
  // Of a TABLE in a meta file; null for any other section.
  virtual const compiled::TableCells* CellsOf(const SectionKind& kind,
                                              std::size_t ordinal) const = 0;

  // KIND/SECTION[/ENTRY[/PART]]
  //
  //   SECTION  a name, #ID, or @ordinal. In kinds without names, a name is that of an entry and
  //            leads to it in the first section that has it.
  //   ENTRY    the key as a script writes it
  //   PART     Type or the name of a part; @n is the n-th value of the entry, from 0
  //
  // Throws a Failure of findings that says what does not exist and which names are near it, and one
  // of wrong usage for a path of another form.
  virtual Found Find(const std::vector<PathStep>& path) const = 0;

  // The kind of that keyword; `holder` is what has none of others: "meta files".
  static const SectionKind& KindNamed(const std::string& keyword, bool only_compiled,
                                      const char* holder);

 protected:
  explicit FileView(std::string path) : path_(std::move(path)) {}

 private:
  const std::string path_;
};

// Throws a Failure when the file cannot be read or is not a sound compiled file.
std::unique_ptr<FileView> OpenView(const std::string& path);

// Of the bytes of a file that is known to be sound; they must outlive the view.
std::unique_ptr<FileView> ViewOf(const std::string& path, std::string_view bytes);

// The part of that name, or the type. Throws a Failure.
EntryPart PartNamed(EntryValue value, const std::string& name);

}  // namespace rux::inspect

#endif  // INSPECT_FILE_VIEW_H_
