#include "support/json.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using rux::support::JsonArray;
using rux::support::JsonDocument;
using rux::support::JsonObject;
using rux::support::JsonString;

namespace {

TEST(JsonTest, QuotesTexts) {
  EXPECT_EQ(JsonString("a\"\\/"), R"("a\"\\/")");
  EXPECT_EQ(JsonString(std::string("\b\f\n\r\t\0\x1B\x7F", 8)),
            "\"\\b\\f\\n\\r\\t\\u0000\\u001b\\u007f\"");
  EXPECT_EQ(JsonString("\xE6\xB8\xA9"), "\"\xE6\xB8\xA9\"");
}

TEST(JsonTest, EscapesWhatCannotBeSeen) {
  EXPECT_EQ(JsonString("\xC2\x9B\xE2\x80\xAE"), R"("\u009b\u202e")");
  EXPECT_EQ(JsonString("\xF3\xA0\x80\xA1"), R"("\udb40\udc21")");  // U+E0021
}

TEST(JsonTest, ReplacesWhatIsNoUtf8) {
  const std::string replaced = "\xEF\xBF\xBD";
  EXPECT_EQ(JsonString("\xFFx"), '"' + replaced + "x\"");
  EXPECT_EQ(JsonString("\xE6\xB8"), '"' + replaced + '"');
  EXPECT_EQ(JsonString("\xE6\xB8x\xC0\xAF"), '"' + replaced + 'x' + replaced + replaced + '"');
}

TEST(JsonTest, NestsObjectsAndLists) {
  const std::string text = JsonDocument([](JsonObject& json) {
    json.Member("text", "a");
    json.Member("none", nullptr);
    json.Member("yes", true);
    json.Object("empty", [](JsonObject&) {});
    json.Array("list", [](JsonArray& list) {
      list.Item(1);
      list.Object([](JsonObject& inner) { inner.Member("b", 4294967295U); });
    });
    json.Objects("each", std::vector<int>{7, 8},
                 [](JsonObject& object, int number) { object.Member("n", number); });
    json.Array("nothing", [](JsonArray&) {});
  });
  EXPECT_EQ(text, R"({
  "text": "a",
  "none": null,
  "yes": true,
  "empty": {},
  "list": [
    1,
    {
      "b": 4294967295
    }
  ],
  "each": [
    {
      "n": 7
    },
    {
      "n": 8
    }
  ],
  "nothing": []
}
)");
}

}  // namespace
