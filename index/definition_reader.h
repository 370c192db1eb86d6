// The first walk over the files of a machine: what they define.
#ifndef INDEX_DEFINITION_READER_H_
#define INDEX_DEFINITION_READER_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "index/index.h"
#include "index/records.h"
#include "reader/script.h"
#include "ruxcomp/model/seeded_hash.h"
#include "sources/source_set.h"

namespace rux::index {

// The definition that a word had when the text of a DEFINE or IFDEF item was read.
struct ReadWord {
  Id item;
  Id definition;
};

class DefinitionReader {
 public:
  DefinitionReader(const sources::SourceSet& sources, Index& index);

  // Fills in the files, sections, items and definitions.
  void Read();

  // In the order of the items.
  const std::vector<ReadWord>& read_words() const { return read_words_; }

 private:
  using Item = ruxcomp::reader::Item;

  // A number whose words may be defined further on.
  struct Pending {
    Id definition;
    Space space;
    std::string_view text;
  };

  void AddFiles();
  void Add(const sources::SourceSection& section);
  void AddItems(const ruxcomp::reader::Section& section, const language::SectionKind& kind);
  void AddDefinitions(const Item& item, const language::SectionKind& kind, std::size_t row);
  void AddTexts(const Item& item, const Space& space);
  void AddKey(const Item& item, const Space& space);
  void AddWord(const Item& item, Id id);
  void DefineAgain(Id section);
  void NoteWord(Id item, std::string_view text);
  Id AddDefinition(Id symbol, std::string_view name);
  Id SymbolOf(const Space& space, std::string_view name);
  void AddNumbers();

  const sources::SourceSet& sources_;
  Index& index_;
  ruxcomp::detail::HashMap<std::string_view, Id> files_by_path_;
  std::vector<Pending> pending_;
  std::vector<ReadWord> read_words_;
  // Of the section that is read.
  Id file_ = kNone;
  std::uint64_t seen_rows_ = 0;  // of templates: only the first item of each defines something
};

}  // namespace rux::index

#endif  // INDEX_DEFINITION_READER_H_
