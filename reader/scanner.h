// The syntax of scripts: text in, sections and items out.
#ifndef READER_SCANNER_H_
#define READER_SCANNER_H_

#include <vector>

#include "reader/arena.h"
#include "reader/script.h"

namespace reader {

// What a scan fills.
struct Scanned {
  Arena& arena;
  std::vector<Section>& sections;
  std::vector<Item>& items;
};

// Scans the text of a script in one pass.
void Scan(std::string_view text, const Scanned& scanned, const ProblemSink& report);

}  // namespace reader

#endif  // READER_SCANNER_H_
