// The second walk over the files of a machine: what refers to its definitions.
#ifndef INDEX_REFERENCE_READER_H_
#define INDEX_REFERENCE_READER_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

#include "index/definition_reader.h"
#include "index/index.h"
#include "index/part_use.h"
#include "index/records.h"
#include "reader/script.h"
#include "ruxcomp/language/names.h"
#include "sources/source_set.h"

namespace rux::index {

class ReferenceReader {
 public:
  ReferenceReader(const sources::SourceSet& sources, const std::vector<ReadWord>& read_words,
                  Index& index);

  // Fills in the references, and the arguments that they name.
  void Read();

  // The definitions of arguments, by symbols: one ARGNUMBER gives an action all of them.
  const std::vector<std::pair<Id, Id>>& arguments() const { return arguments_; }

 private:
  void FindIncludedFiles();
  void ReadItem(Id id);
  void ReadPart(const PartUse& use, std::string_view text);
  void ReadNumber(const PartUse& use, std::string_view text);
  void ReadField(language::Role role, std::string_view text);
  void ReadReference(const language::Reference& reference, std::string_view text);
  void ReadPath(std::string_view text);
  void ReadNamed(const language::NamedEntry& named, std::string_view text);
  void ReadArgument(std::string_view text);
  void ReadWordOrNumber(std::string_view text, bool may_be_number);
  // The word that the text is when the item is checked or, in DEFINE and IFDEF sections, read.
  Id WordAt(std::string_view text) const;

  // Of an action, by its ARGNUMBER.
  struct Arguments {
    Id section = kNone;
    Id definition = kNone;
    std::uint32_t count = 0;
    bool has_count = false;  // false: the text is not a number, and no argument is valid
  };
  const Arguments& ArgumentsOf(Id section);
  bool IsArgument(std::uint32_t number);
  Id SymbolOfArgument(std::string_view text, std::uint32_t number);
  Reference& Add(const Space& space, std::string_view text);
  void Take(Reference& reference, Id symbol);

  const sources::SourceSet& sources_;
  const std::vector<ReadWord>& read_words_;
  std::size_t next_read_word_ = 0;
  Id read_word_ = kNone;  // of the item
  Index& index_;
  std::vector<Id> taken_;  // by symbols: the definition that the library takes
  std::vector<std::pair<Id, Id>> arguments_;
  std::map<const ruxcomp::reader::Item*, Id> included_;  // files, by the items that include them
  bool has_operand_names_ = false;
  Arguments known_arguments_;  // of the section that was asked for last

  // Of the item that is read.
  Id item_ = 0;
  std::uint32_t part_ = 0;
  language::Role role_ = language::Role::kNone;
  const language::ValueType* record_ = nullptr;
  std::vector<std::string_view> parts_;
};

}  // namespace rux::index

#endif  // INDEX_REFERENCE_READER_H_
