// An index of a machine: what its files define and what refers to it, by the library's rules.
//
// It is made from the files as they were read, and does not ask whether they are correct.
//
//   definitions  the first one of a name counts, but of a word the last one; while DEFINE and IFDEF
//                sections are read, the last one so far
//   references   to names, IDs, words, arguments and files; to a sensor's ID in the lists
#ifndef INDEX_INDEX_H_
#define INDEX_INDEX_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "index/records.h"
#include "index/words.h"
#include "ruxcomp/model/hash_index.h"
#include "sources/source_set.h"

namespace rux::index {

// Consecutive records, or numbers of records.
template <class Element>
class Span {
 public:
  Span(const Element* first, std::size_t count) : first_(first), count_(count) {}
  const Element* begin() const { return first_; }
  const Element* end() const { return first_ + count_; }
  std::size_t size() const { return count_; }
  bool empty() const { return count_ == 0; }
  const Element& operator[](std::size_t i) const { return first_[i]; }
  const Element& front() const { return *first_; }

 private:
  const Element* first_;
  std::size_t count_;
};

class Index {
 public:
  // The files must outlive the index.
  explicit Index(const sources::SourceSet& sources);
  Index(const Index&) = delete;
  Index& operator=(const Index&) = delete;

  // The files by number: each that was opened, in the order in which it was.
  const std::vector<const sources::SourceFile*>& files() const { return files_; }
  // By the path under which it can be opened; kNone: there is none.
  Id FindFile(const std::string& path) const;
  Id NumberOf(const sources::SourceFile* file) const { return numbers_.at(file); }

  const std::vector<SectionRecord>& sections() const { return sections_; }
  const std::vector<ItemRecord>& items() const { return items_; }
  const std::vector<Symbol>& symbols() const { return symbols_; }
  const std::vector<Definition>& definitions() const { return definitions_; }
  const std::vector<Reference>& references() const { return references_; }

  // In the order of the file.
  const std::vector<Id>& SectionsOf(Id file) const { return sections_of_files_[file]; }
  Span<ItemRecord> ItemsOf(Id section) const;
  Span<Definition> DefinitionsIn(Id item) const;
  Span<Reference> ReferencesIn(Id item) const;
  // The item, or the header of the section, up to its last byte that is not blank or comment; of a
  // section, up to the end of its last item.
  support::ByteRange RangeOfItem(Id item) const;
  support::ByteRange RangeOfSection(Id section) const;

  // The numbers of the definitions of a symbol, in the order in which the library reads them, and
  // of the references to it.
  Span<Id> DefinitionsOf(Id symbol) const;
  Span<Id> ReferencesTo(Id symbol) const;
  // The definition that the library takes; kNone: there is none.
  Id TakenDefinitionOf(Id symbol) const;

  // `section`: where names are local to a section. kNone: there is none.
  Id Find(const Space& space, std::string_view name, Id section = kNone) const;
  Id Find(const Space& space, std::uint32_t number, Id section = kNone) const;

  // The first item of a section that is such an entry; kNone: there is none.
  Id FindItem(Id section, std::uint32_t entry) const;
  // The first part of that item; empty when there is none.
  std::string_view TextOf(Id section, std::uint32_t entry) const;
  // The definition that the section's NAME or ID is; kNone: it has none.
  Id DefinitionIn(Id section, std::uint32_t entry) const;

  // What the parts of a value with a known type are, or those of a repeater; null for others.
  const language::ValueType* RecordOf(std::uint32_t entry, const std::string_view* parts,
                                      std::size_t count) const;

  // Once everything is read.
  using WordTable = Words<Id>;  // by definitions
  const WordTable& words() const { return words_; }

 private:
  friend class DefinitionReader;
  friend class ReferenceReader;

  // `arguments`: definitions of symbols beside their own.
  void Group(const std::vector<std::pair<Id, Id>>& arguments);
  // Where texts and numbers of a space are, in the tables below.
  static std::uint32_t ScopeOf(const Space& space, Id section);

  std::vector<const sources::SourceFile*> files_;
  std::map<const sources::SourceFile*, Id> numbers_;  // of them
  std::vector<std::vector<Id>> sections_of_files_;
  std::vector<SectionRecord> sections_;
  std::vector<ItemRecord> items_;
  std::vector<Symbol> symbols_;
  std::vector<Definition> definitions_;
  std::vector<Reference> references_;
  WordTable words_;
  ruxcomp::detail::HashIndex<ruxcomp::detail::TextKey> by_text_;
  ruxcomp::detail::HashIndex<ruxcomp::detail::NumberKey> by_number_;

  // The members of each symbol, in their order.
  class Groups {
   public:
    Groups() = default;
    Groups(std::size_t symbols, const std::vector<std::pair<Id, Id>>& pairs);
    Span<Id> Of(Id symbol) const;

   private:
    std::vector<std::uint32_t> first_;  // of those of a symbol, in members_
    std::vector<Id> members_;
  };
  Groups definitions_of_;
  Groups references_to_;
};

}  // namespace rux::index

#endif  // INDEX_INDEX_H_
