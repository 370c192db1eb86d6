// What an editor sends: arbitrary bytes as a stream of messages and as the text of a document. How
// the stream is cut into pieces makes no difference; each message is taken or refused with a
// reason; every place of a text has a position in each encoding, and a position leads back to its
// place.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/target.h"
#include "protocol/framing.h"
#include "protocol/json.h"
#include "protocol/message.h"
#include "protocol/positions.h"
#include "workspace/documents.h"

namespace {

using fuzz::Expect;
using rux::protocol::Encoding;
using rux::protocol::FrameReader;
using rux::protocol::Json;
using rux::protocol::Position;

// The messages of a stream that comes in pieces of that size; "?" for what is none.
std::vector<std::string> MessagesOf(std::string_view stream, std::size_t piece) {
  std::vector<std::string> messages;
  FrameReader frames;
  for (std::size_t i = 0; i < stream.size(); i += piece) {
    frames.Add(stream.substr(i, piece));
    std::string message;
    for (;;) {
      const FrameReader::Outcome outcome = frames.Next(message);
      if (outcome == FrameReader::Outcome::kMore) break;
      messages.push_back(outcome == FrameReader::Outcome::kMessage ? message : "?");
      if (outcome == FrameReader::Outcome::kBroken) return messages;
    }
  }
  return messages;
}

void Parse(const std::string& text) {
  Json id;
  std::string answer;
  try {
    const auto message = rux::protocol::ParseMessage(text, id);
    answer = rux::protocol::Answer(message.id, message.method);
  } catch (const rux::protocol::RequestError& error) {
    answer = rux::protocol::ErrorAnswer(id, error.code(), error.what());
  }
  Expect(Json::accept(answer), "answers are JSON");
}

bool IsBefore(Position a, Position b) {
  return a.line < b.line || (a.line == b.line && a.character < b.character);
}

void CheckPlaces(const std::string& text, Encoding encoding) {
  const rux::protocol::TextLines lines(text);
  Position before;
  std::size_t last = 0;
  for (std::size_t i = 0; i <= text.size(); ++i) {
    const Position position = lines.PositionOf(i, encoding);
    Expect(!IsBefore(position, before), "positions are in the order of the text");
    const std::size_t place = lines.OffsetOf(position, encoding);
    Expect(place <= i && place >= last, "a position leads back to the beginning of its place");
    const Position again = rux::protocol::TextLines(text).PositionOf(place, encoding);
    Expect(!IsBefore(again, position) && !IsBefore(position, again), "and stays the same");
    before = position;
    last = place;
  }
}

// A change of a range is the change of its bytes.
void CheckEdit(const std::string& text, Encoding encoding) {
  const Position start{static_cast<std::uint32_t>(text.size() % 3),
                       static_cast<std::uint32_t>(text.size() % 7)};
  const Position end{start.line + 1, start.character};
  rux::workspace::Document document("untitled:x", 1, text);
  const auto bytes = document.lines().BytesOf({start, end}, encoding);
  Expect(bytes.begin <= bytes.end && bytes.end <= text.size(), "a range is in the text");
  document.Apply({{"range", rux::protocol::Range{start, end}}, {"text", "new"}}, encoding);
  Expect(document.text() == text.substr(0, bytes.begin) + "new" + text.substr(bytes.end),
         "only the range changes");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t kLongest = 4096;
  const std::string bytes(reinterpret_cast<const char*>(data), std::min(size, kLongest));
  const std::vector<std::string> messages = MessagesOf(bytes, bytes.size() + 1);
  Expect(MessagesOf(bytes, 1) == messages && MessagesOf(bytes, 7) == messages,
         "pieces make no difference");
  for (const std::string& message : messages) Parse(message);
  Parse(bytes);
  for (const Encoding encoding : {Encoding::kUtf8, Encoding::kUtf16, Encoding::kUtf32}) {
    CheckPlaces(bytes, encoding);
    CheckEdit(bytes, encoding);
  }
  return 0;
}
