#include "tests/generators/random_layout.h"

#include <algorithm>
#include <cctype>
#include <utility>

namespace {

using Sections = std::vector<RandomSection>;

// Texts that need no quotes wherever they are.
bool IsPlain(const std::string& text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '.';
  });
}

// One file.
class FileWriter {
 public:
  FileWriter(Random& random, std::string name)
      : random_(random), name_(std::move(name)), line_end_(random.Chance(20) ? "\r\n" : "\n") {
    if (random_.Chance(10)) text_ = "\xEF\xBB\xBF";
  }

  void Write(RandomSection& section) {
    section.place = WriteLine(Blanks() + "[" + Blanks() + section.name + Blanks() + "]");
    for (RandomItem& item : section.items) WriteItem(item);
  }

  void WriteInclude(const std::string& library_path) {
    WriteLine("[INCLUDE]");
    WriteLine("FILE = \"" + library_path + "\"");
  }

  // The end of the last line may be missing.
  std::string Finish() {
    if (!text_.empty() && text_.back() == '\n' && random_.Chance(10)) {
      text_.resize(text_.size() - line_end_.size());
    }
    return std::move(text_);
  }

 private:
  void WriteItem(RandomItem& item) {
    std::string line = Blanks() + item.key + Blanks() + "=" + Blanks();
    const char* separator = "";
    for (const std::string& part : item.parts) {
      line += separator + Blanks() + Spelled(part) + Blanks();
      separator = ",";
    }
    item.place = WriteLine(line);
  }

  // What is before and after quotes is dropped.
  std::string Spelled(const std::string& part) {
    if (IsPlain(part) && !random_.Chance(20)) return part;
    const std::string before = random_.Chance(5) ? "dropped" : "";
    const std::string after = random_.Chance(5) ? " [dropped]" : "";
    return before + '"' + part + '"' + after;
  }

  Place WriteLine(std::string line) {
    if (random_.Chance(5)) text_ += Blanks() + line_end_;
    if (random_.Chance(5)) text_ += Blanks() + "# [MORVRUX] \" = \xC3\xA4" + line_end_;
    if (random_.Chance(10)) line += " ; a comment \"";
    if (random_.Chance(10)) line.insert(random_.Below(line.size()), "\\" + line_end_);
    const auto lines_before = std::count(text_.begin(), text_.end(), '\n');
    text_ += line + line_end_;
    return {name_, static_cast<std::uint32_t>(lines_before + 1)};
  }

  std::string Blanks() {
    static const std::vector<std::string> blanks = {"", "", " ", " ", "  ", "\t"};
    return random_.Pick(blanks);
  }

  Random& random_;
  const std::string name_;
  const std::string line_end_;
  std::string text_;
};

class Layout {
 public:
  Layout(Random& random, Sections& sections) : random_(random), sections_(sections) {}

  SourceFiles Spread() {
    WriteFile("", "board.rux", 0, sections_.size());
    // The main script is finished last.
    std::rotate(files_.begin(), files_.end() - 1, files_.end());
    return std::move(files_);
  }

 private:
  // The sections from one on up to another. The file names others relative to its own folder, with
  // backslashes.
  void WriteFile(const std::string& folder, const std::string& name, std::size_t begin,
                 std::size_t end) {
    FileWriter file(random_, name);
    for (std::size_t at = begin; at < end;) {
      const std::size_t count = random_.Chance(10) ? random_.Between(1, 6) : 0;
      const std::size_t part_end = std::min(at + count, end);
      if (part_end == at || HasGroup(at, part_end)) {
        file.Write(sections_[at++]);
        continue;
      }
      const std::string number = std::to_string(++included_);
      file.WriteInclude("part" + number + "\\part.rux");
      WriteFile(folder + "part" + number + "/", "part.rux", at, part_end);
      at = part_end;
    }
    files_.emplace_back(folder + name, file.Finish());
  }

  // Groups stay in one file: their lines decide which one is the earlier.
  bool HasGroup(std::size_t begin, std::size_t end) const {
    for (; begin < end; ++begin) {
      if (sections_[begin].name == "GROUP") return true;
    }
    return false;
  }

  Random& random_;
  Sections& sections_;
  SourceFiles files_;
  std::uint32_t included_ = 0;
};

}  // namespace

SourceFiles RandomLayout(Random& random, std::vector<RandomSection>& sections) {
  return Layout(random, sections).Spread();
}
