// The files that lists are read from: tables that people keep, and what programs print of a running
// machine.
#ifndef LISTS_FORMATS_H_
#define LISTS_FORMATS_H_

#include <string>
#include <string_view>
#include <vector>

#include "lists/list.h"

namespace rux::lists {

struct Format {
  std::string_view name;
  // Whether a text is likely to be of that format, unless it is of one before.
  bool (*fits)(std::string_view text);
  // Throws a Failure that names the line of what is wrong.
  List (*read)(const std::string& path, std::string_view text);
  // Of its columns; no meanings: people name them.
  std::string_view unit;  // the one that has the unit of the others; empty: none
  std::vector<Meaning> meanings;
  // The columns with limits that sensors of scripts lack: non-recoverable ones.
  std::vector<std::string> other_limits = {};

  bool HasOtherLimit(const std::string& column) const;
};

// The last one takes every text.
const std::vector<Format>& Formats();

// The one of that name or, without a name, the first one that fits.
const Format& FormatFor(const std::string& name, std::string_view text);

// The text of a file, or of standard input ("-"), without a byte order mark. Throws a Failure.
std::string ReadListFile(const std::string& path);

}  // namespace rux::lists

#endif  // LISTS_FORMATS_H_
