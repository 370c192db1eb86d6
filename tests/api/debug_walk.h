// A second reading of debug meta files, to find out where damaged ones lead.
#ifndef TESTS_API_DEBUG_WALK_H_
#define TESTS_API_DEBUG_WALK_H_

#include <algorithm>
#include <cstdint>
#include <map>
#include <string>
#include <utility>

// Follows the lengths and counts of a file as the reader must, keeps nothing, and notes where they
// are.
class DebugWalk {
 public:
  // The lengths and counts of a whole file, by their offsets.
  using Lengths = std::map<std::size_t, std::uint32_t>;
  static Lengths OverFile(const std::string& file) {
    DebugWalk walk(file);
    walk.WalkFile();
    return walk.lengths_;
  }

  // What loading comes to: "1" or "vector".
  static std::string Outcome(const std::string& file) try {
    OverFile(file);
    return "1";
  } catch (const PastEnd&) {
    return "vector";
  }

 private:
  struct PastEnd {};  // thrown where the reader must raise

  struct Range {
    std::size_t begin, end;
  };

  explicit DebugWalk(const std::string& file) : file_(file) {}

  // What is past the end of the file reads as zero.
  std::uint32_t Number(Range& range) {
    const std::size_t begin = Take(range, 4).begin;
    std::uint32_t number = 0;
    for (std::size_t at = begin + 4; at-- > begin;) {
      number = number << 8 | (at < file_.size() ? static_cast<unsigned char>(file_[at]) : 0u);
    }
    return number;
  }
  std::uint32_t Length(Range& range) {
    const std::size_t offset = range.begin;
    return lengths_[offset] = Number(range);
  }
  static Range Take(Range& range, std::size_t length) {
    if (range.end - range.begin < length) throw PastEnd();
    range.begin += length;
    return {range.begin - length, range.begin};
  }
  Range Counted(Range& range) {
    const std::size_t length = Length(range);
    return Take(range, range.end == SIZE_MAX ? std::min(length, MostFrom(range.begin)) : length);
  }
  // Behind the end of the file follow no more zeros than the file has bytes.
  std::size_t MostFrom(std::size_t begin) const {
    return file_.size() - std::min(begin, file_.size()) + file_.size();
  }
  void List(Range& range) {
    for (std::uint32_t count = Length(range); count > 0; --count) Counted(range);
  }

  void WalkFile() {
    Range data = {128, SIZE_MAX};
    for (std::uint32_t words = Length(data); words > 0 && data.begin < file_.size(); --words) {
      Counted(data);
      Number(data);
    }
    // Behind the end every kind is empty.
    for (std::uint32_t kinds = Length(data); kinds > 0 && data.begin < file_.size(); --kinds) {
      for (std::uint32_t sections = Length(data); sections > 0; --sections) {
        WalkSection(Counted(data));
      }
    }
  }

  std::uint32_t Identifier(Range record) {
    Take(record, 4);
    return Number(record);
  }

  void WalkSection(Range record) {
    const std::uint32_t identifier = Identifier(record);
    if (identifier < 0x20000001 || identifier > 0x2000000D) return;
    WalkObject(Counted(record));
    for (std::uint32_t entries = Length(record); entries > 0; --entries) WalkEntry(Counted(record));
  }

  void WalkEntry(Range record) {
    if (!IsClass(Identifier(record) >> 16)) return;
    WalkObject(Counted(record));
    WalkPayload(Counted(record));
  }

  void WalkObject(Range object) {
    Take(object, 16);
    Counted(object);
    if (!std::exchange(has_files_, true)) List(object);
  }

  static bool IsClass(std::uint32_t high_half) {
    return high_half == 0x1001 || high_half == 0x1002 || high_half == 0x1004 ||
           high_half == 0x1008 || high_half == 0x1010;
  }

  void WalkPayload(Range payload) {
    switch (Number(payload) >> 16) {
      case 0x1001:
        Number(payload);
        break;
      case 0x1002:
        Counted(payload);
        break;
      case 0x1004:
        List(payload);
        break;
      case 0x1008:
        WalkValue(Counted(payload));
        break;
      case 0x1010:
        WalkFields(payload, 2, true);
        break;
    }
  }

  void WalkFields(Range& range, int texts, bool has_list) {
    for (; texts > 0; --texts) Counted(range);
    if (has_list) List(range);
  }

  void WalkValue(Range value) {
    static const std::map<std::uint32_t, std::pair<int, bool>> kBodies = {
        {1, {1, false}},   {2, {5, false}},  {3, {1, true}},    {4, {4, false}},
        {5, {4, true}},    {6, {2, true}},   {7, {0, true}},    {8, {4, false}},
        {9, {4, true}},    {10, {2, false}}, {11, {4, true}},   {12, {4, false}},
        {101, {1, false}}, {102, {2, true}}, {103, {1, false}}, {104, {1, false}}};
    const std::uint32_t code = Number(value);
    Counted(value);
    if (kBodies.count(code)) WalkFields(value, kBodies.at(code).first, kBodies.at(code).second);
  }

  const std::string& file_;
  Lengths lengths_;
  bool has_files_ = false;
};

#endif  // TESTS_API_DEBUG_WALK_H_
