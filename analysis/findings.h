// What is found in a machine, with places as a client takes them.
#ifndef ANALYSIS_FINDINGS_H_
#define ANALYSIS_FINDINGS_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "protocol/positions.h"
#include "support/text_file.h"

namespace rux::analysis {

// A file of a machine, or one that it lacks.
struct File {
  std::string path;        // absolute, as it is reached; of a document without a file, its URI
  std::string whole_name;  // the same for all paths of the file
  bool is_read = false;
};

struct Place {
  std::size_t file = 0;  // of the machine's
  protocol::Range range;
  support::ByteRange bytes;
  std::string text;  // that is there
};

struct Related {
  std::string text;
  Place at;
};

// What to put in the place of bytes of the file that a finding is in.
struct Fix {
  protocol::Range range;
  std::string text;
  std::string title;
  bool is_safe = false;
};

struct Finding {
  std::string id;             // of the message; empty: it is about all of them
  std::uint8_t severity = 0;  // findings::Severity
  std::string text;
  Place at;
  std::vector<Related> related;
  std::optional<Fix> fix;
  std::string key;               // driver::KeyOf()
  bool is_about_unused = false;  // driver::IsAboutUnused()
};

// What an INCLUDE names.
struct Include {
  Place at;
  std::size_t file = 0;  // of the machine's
};

struct MachineFindings {
  std::string main;  // what the main script is called in messages
  std::vector<File> files;
  std::string shape;  // sources::ShapeOf()
  std::vector<Finding> findings;
  std::vector<Include> includes;
  bool has_all = true;  // false: the findings are those up to a limit
  std::string failure;  // why nothing is known, or not all; empty otherwise
};

// For a wire.
template <class Wire>
void Walk(Wire& wire, File& file) {
  wire(file.path);
  wire(file.whole_name);
  wire(file.is_read);
}
template <class Wire>
void Walk(Wire& wire, protocol::Position& position) {
  wire(position.line);
  wire(position.character);
}
template <class Wire>
void Walk(Wire& wire, Place& place) {
  wire(place.file);
  Walk(wire, place.range.start);
  Walk(wire, place.range.end);
  wire(place.bytes.begin);
  wire(place.bytes.end);
  wire(place.text);
}
template <class Wire>
void Walk(Wire& wire, Related& related) {
  wire(related.text);
  wire(related.at);
}
template <class Wire>
void Walk(Wire& wire, Fix& fix) {
  Walk(wire, fix.range.start);
  Walk(wire, fix.range.end);
  wire(fix.text);
  wire(fix.title);
  wire(fix.is_safe);
}
template <class Wire>
void Walk(Wire& wire, Finding& finding) {
  wire(finding.id);
  wire(finding.severity);
  wire(finding.text);
  wire(finding.at);
  wire(finding.related);
  wire(finding.fix);
  wire(finding.key);
  wire(finding.is_about_unused);
}
template <class Wire>
void Walk(Wire& wire, Include& include) {
  wire(include.at);
  wire(include.file);
}
template <class Wire>
void Walk(Wire& wire, MachineFindings& machine) {
  wire(machine.main);
  wire(machine.files);
  wire(machine.shape);
  wire(machine.findings);
  wire(machine.includes);
  wire(machine.has_all);
  wire(machine.failure);
}

}  // namespace rux::analysis

#endif  // ANALYSIS_FINDINGS_H_
