// A difference between two machines.
#ifndef DIFF_CHANGE_H_
#define DIFF_CHANGE_H_

#include <cstdint>
#include <optional>
#include <string>

#include "diff/classes.h"
#include "machine/place.h"
#include "ruxcomp/language/sections.h"

namespace rux::diff {

// What one of the machines has there.
struct Side {
  std::optional<std::uint32_t> id = {};      // of the section
  std::optional<std::string> name = {};      // of the section
  std::optional<std::string> text = {};      // the value; none where there is nothing
  std::optional<machine::Place> place = {};  // where a script says it, if that is known
};

struct Change {
  const ClassRow* row;
  const language::SectionKind* kind;  // DEFINE for a defined word
  std::string entry = {};             // the key, or the cells; empty: the section itself
  std::string part = {};              // of the value; empty: all of it
  Side before = {};
  Side after = {};

  // The side that says what the change is about: that of the old machine, if it has it.
  const Side& subject() const { return before.id || before.name || before.text ? before : after; }

  // "SENSOR #0x101 CPU0_TEMP"
  std::string SectionText() const;
  // "THRESHOLD_FH", "VALUE/Args"
  std::string EntryText() const;
  // "THRESHOLD_FH: 100 -> 105"; without an entry: "CPU0 -> CPU1". All three are safe to show.
  std::string WhatText() const;
  // Of class, kind, ID, NAME and entry: 16 hexadecimal digits.
  std::string Fingerprint() const;
};

}  // namespace rux::diff

#endif  // DIFF_CHANGE_H_
