// A machine as its texts are, read and indexed in this process: the library has no part in it.
#ifndef ANALYSIS_READING_H_
#define ANALYSIS_READING_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "analysis/findings.h"
#include "analysis/places.h"
#include "analysis/surroundings.h"
#include "driver/compile_options.h"
#include "index/index.h"
#include "index/records.h"
#include "protocol/positions.h"
#include "settings/limit_rule.h"
#include "sources/source_set.h"
#include "support/text_file.h"

namespace rux::analysis {

class Reading {
 public:
  // `script`: the main script. The texts that the reader takes instead of files are cleared.
  Reading(const Surroundings& surroundings, const std::string& script);
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;

  const index::Index& index() const { return index_; }
  // What the project states about the limits of sensors.
  const std::vector<settings::LimitRule>& limits() const { return limits_; }

  // kNone: not a file of the machine.
  index::Id NumberOf(const std::string& whole_name) const;
  const File& FileAt(index::Id file) const { return files_[numbers_[file]]; }
  protocol::Range RangeOf(index::Id file, support::ByteRange bytes) const;
  std::uint32_t OffsetOf(index::Id file, protocol::Position position) const;

 private:
  class OpenTexts;
  Reading(const Surroundings& surroundings, const driver::CompileOptions& options,
          const OpenTexts& texts);

  std::vector<settings::LimitRule> limits_;
  const sources::SourceSet sources_;
  const index::Index index_;
  mutable Files files_;               // notes the lines of a file when they are asked for
  std::vector<std::size_t> numbers_;  // in files_, by numbers in the index
};

}  // namespace rux::analysis

#endif  // ANALYSIS_READING_H_
