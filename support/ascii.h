// Letters and digits of ASCII: the same in every locale, and no byte of another character is one.
#ifndef SUPPORT_ASCII_H_
#define SUPPORT_ASCII_H_

namespace rux::support {

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
constexpr bool IsLetterOrDigit(char c) { return IsLetter(c) || IsDigit(c); }
constexpr char ToUpper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
constexpr char ToLower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace rux::support

#endif  // SUPPORT_ASCII_H_
