// Files that are open by their number.
#ifndef SUPPORT_DESCRIPTOR_H_
#define SUPPORT_DESCRIPTOR_H_

#include <cstddef>
#include <string>
#include <string_view>

namespace rux::support {

// Owns an open file. -1: none.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) : number_(number) {}
  ~Descriptor();
  Descriptor(Descriptor&& other) noexcept;
  Descriptor& operator=(Descriptor&& other) noexcept;

  int number() const { return number_; }
  bool is_open() const { return number_ >= 0; }

  // False when the system tells only now, in errno, that something was not written. The file is
  // closed either way.
  bool Close();

 private:
  int number_;
};

// Each does all that it is asked for, over interruptions and in as many steps as it takes, or
// answers false with the reason in errno.
bool WriteAll(int file, std::string_view bytes);
// Appends what is left of the file. One that has more than `most` bytes is read no further than one
// byte beyond.
bool ReadAll(int file, std::size_t most, std::string& bytes);

}  // namespace rux::support

#endif  // SUPPORT_DESCRIPTOR_H_
