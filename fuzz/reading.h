// What every reader of text files promises: an input is read, or refused in a certain form.
#ifndef FUZZ_READING_H_
#define FUZZ_READING_H_

#include <string>
#include <string_view>

#include "fuzz/target.h"
#include "support/failure.h"
#include "support/utf8.h"

namespace fuzz {

// Whether read(), which reads a file of that path, did not refuse it. A refusal is a Failure with
// one line of text that begins with the place.
template <class Read>
bool IsRead(const std::string& path, Read read) {
  try {
    read();
    return true;
  } catch (const rux::support::Failure& failure) {
    const std::string_view text = failure.what();
    Expect(text.substr(0, path.size() + 1) == path + ':', "a refusal names the line");
    Expect(text.find('\n') == std::string_view::npos, "a refusal is one line");
    Expect(rux::support::IsUtf8(text), "a refusal is text");
    return false;
  }
}

}  // namespace fuzz

#endif  // FUZZ_READING_H_
