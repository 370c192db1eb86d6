// Names of files that are under way.
#ifndef SUPPORT_TEMPORARY_NAME_H_
#define SUPPORT_TEMPORARY_NAME_H_

#include <functional>
#include <string>

namespace rux::support {

// A name ".rux-..." in a folder, which goes with its owner, and the file with it unless it has
// another name or is open.
class TemporaryName {
 public:
  using Make = std::function<bool(const char* name)>;

  TemporaryName() = default;  // none
  // A name that nothing had before make(name) answered true; none, with the reason in errno, when
  // it answered false for another reason than EEXIST.
  TemporaryName(const std::string& folder, const Make& make);
  ~TemporaryName();
  TemporaryName(TemporaryName&& other) noexcept;
  TemporaryName& operator=(TemporaryName&& other) noexcept;

  bool is_there() const { return !text_.empty(); }
  const std::string& text() const { return text_; }

  // Gives the file another name, in place of what has that. False, with the reason in errno, when
  // it keeps this one.
  bool RenameTo(const std::string& name);

 private:
  std::string text_;
};

}  // namespace rux::support

#endif  // SUPPORT_TEMPORARY_NAME_H_
