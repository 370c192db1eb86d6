// From places of scripts to those of a client.
#ifndef ANALYSIS_PLACES_H_
#define ANALYSIS_PLACES_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "analysis/findings.h"
#include "diagnostics/diagnostic.h"
#include "protocol/positions.h"
#include "sources/source_file.h"
#include "sources/source_set.h"
#include "support/text_file.h"
#include "workspace/documents.h"

namespace rux::analysis {

// The files of a run, each once whatever the paths that lead there.
class Files {
 public:
  // `paths`: of all files that there were to read. To be made while the texts that were read are
  // where the reader looks for them.
  Files(const sources::SourceSet& sources, const std::vector<std::string>& paths,
        const workspace::Documents& documents, protocol::Encoding encoding);

  std::size_t NumberOf(const std::string& path);
  Place PlaceOf(const diagnostics::Location& at);
  Place PlaceOf(const sources::SourceFile& file, support::ByteRange bytes);
  // The file is one of the run's.
  Place PlaceOf(const support::TextFile& file, support::ByteRange bytes) {
    return PlaceOf(*sources_.at(&file), bytes);
  }
  protocol::Range RangeOf(const sources::SourceFile& file, support::ByteRange bytes);
  std::uint32_t OffsetOf(const sources::SourceFile& file, protocol::Position position);

  const File& operator[](std::size_t number) const { return files_[number]; }
  std::vector<File> Take() { return std::move(files_); }

 private:
  // Lines without the mark that may begin a file: editors take it away.
  struct Lines {
    std::uint32_t mark;
    protocol::TextLines lines;

    support::ByteRange Shown(support::ByteRange bytes) const {
      return {std::max(bytes.begin, mark) - mark, std::max(bytes.end, mark) - mark};
    }
  };
  File FileAt(const std::string& path) const;
  const Lines& LinesOf(const sources::SourceFile& file);

  const workspace::Documents& documents_;
  const protocol::Encoding encoding_;
  std::map<std::string, std::size_t> numbers_;  // by paths
  std::map<std::string, std::size_t> whole_names_;
  std::vector<File> files_;
  std::map<const support::TextFile*, const sources::SourceFile*> sources_;
  std::map<std::string, const sources::SourceFile*> by_path_;
  std::set<const sources::SourceFile*> open_;  // whose texts are those of documents
  std::map<const sources::SourceFile*, Lines> lines_;
};

}  // namespace rux::analysis

#endif  // ANALYSIS_PLACES_H_
