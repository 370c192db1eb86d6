// The text of a warning, which may be given as a function that makes it.
#ifndef RULES_WARNING_TEXT_H_
#define RULES_WARNING_TEXT_H_

#include <string>
#include <string_view>
#include <type_traits>

namespace rux::rules {

// Only the texts of warnings that are kept are made: of millions, a few. Lives no longer than what
// it is given.
class WarningText {
 public:
  WarningText(const char* text)  // NOLINT(google-explicit-constructor): rules give it as it is
      : from_(text),
        make_([](const void* from) { return std::string(static_cast<const char*>(from)); }) {}

  // make() answers the text.
  template <class Make, class = std::enable_if_t<std::is_invocable_r_v<std::string, Make>>>
  WarningText(const Make& make)  // NOLINT(google-explicit-constructor)
      : from_(&make), make_([](const void* from) { return (*static_cast<const Make*>(from))(); }) {}

  std::string Made() const { return make_(from_); }

 private:
  const void* from_;
  std::string (*make_)(const void* from);
};

}  // namespace rux::rules

#endif  // RULES_WARNING_TEXT_H_
