#include "tests/tool/decompile/random_layout.h"

#include <algorithm>
#include <cctype>

namespace {

using Sections = std::vector<RandomSection>;

// Texts that need no quotes wherever they stand.
bool IsPlain(const std::string& text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '.';
  });
}

// One file.
class FileWriter {
 public:
  explicit FileWriter(Random& random)
      : random_(random), line_end_(random.Chance(20) ? "\r\n" : "\n") {
    if (random_.Chance(10)) text_ = "\xEF\xBB\xBF";
  }

  void Write(const RandomSection& section) {
    WriteLine(Blanks() + "[" + Blanks() + section.name + Blanks() + "]");
    for (const RandomItem& item : section.items) WriteItem(item);
  }

  void WriteInclude(const std::string& library_path) {
    WriteLine("[INCLUDE]");
    WriteLine("FILE = \"" + library_path + "\"");
  }

  const std::string& text() const { return text_; }

 private:
  void WriteItem(const RandomItem& item) {
    std::string line = Blanks() + item.key + Blanks() + "=" + Blanks();
    const char* separator = "";
    for (const std::string& part : item.parts) {
      line += separator + Blanks() + Spelled(part) + Blanks();
      separator = ",";
    }
    WriteLine(line);
  }

  // What stands before and behind quotes is dropped.
  std::string Spelled(const std::string& part) {
    if (IsPlain(part) && !random_.Chance(20)) return part;
    const std::string before = random_.Chance(5) ? "dropped" : "";
    const std::string behind = random_.Chance(5) ? " [dropped]" : "";
    return before + '"' + part + '"' + behind;
  }

  void WriteLine(std::string line) {
    if (random_.Chance(5)) text_ += Blanks() + line_end_;
    if (random_.Chance(5)) text_ += Blanks() + "# [MORVRUX] \" = \xC3\xA4" + line_end_;
    if (random_.Chance(10)) line += " ; a comment \"";
    if (random_.Chance(10)) line.insert(random_.Below(line.size()), "\\" + line_end_);
    text_ += line + line_end_;
  }

  std::string Blanks() {
    static const std::vector<std::string> blanks = {"", "", " ", " ", "  ", "\t"};
    return random_.Pick(blanks);
  }

  Random& random_;
  const std::string line_end_;
  std::string text_;
};

class Layout {
 public:
  explicit Layout(Random& random) : random_(random) {}

  SourceFiles Spread(const Sections& sections) {
    WriteFile("", "board.rux", sections);
    // The main script is finished last.
    std::rotate(files_.begin(), files_.end() - 1, files_.end());
    return std::move(files_);
  }

 private:
  // The file names others relative to its own folder, with backslashes.
  void WriteFile(const std::string& folder, const std::string& name, const Sections& sections) {
    FileWriter file(random_);
    for (std::size_t at = 0; at < sections.size();) {
      const std::size_t count = random_.Chance(10) ? random_.Between(1, 6) : 0;
      const std::size_t end = std::min(at + count, sections.size());
      const Sections part(sections.begin() + static_cast<std::ptrdiff_t>(at),
                          sections.begin() + static_cast<std::ptrdiff_t>(end));
      if (part.empty() || HasGroup(part)) {
        file.Write(sections[at++]);
        continue;
      }
      const std::string number = std::to_string(++included_);
      file.WriteInclude("part" + number + "\\part.rux");
      WriteFile(folder + "part" + number + "/", "part.rux", part);
      at = end;
    }
    files_.emplace_back(folder + name, file.text());
  }

  // Groups stay in one file: their lines tell which one is the earlier.
  static bool HasGroup(const Sections& sections) {
    return std::any_of(sections.begin(), sections.end(),
                       [](const RandomSection& section) { return section.name == "GROUP"; });
  }

  Random& random_;
  SourceFiles files_;
  std::uint32_t included_ = 0;
};

}  // namespace

SourceFiles RandomLayout(Random& random, const std::vector<RandomSection>& sections) {
  return Layout(random).Spread(sections);
}
