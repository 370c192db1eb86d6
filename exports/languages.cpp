// Constants as C, Rust, Go and Python have them.
#include <fmt/format.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "exports/account.h"
#include "exports/constants.h"
#include "exports/formats.h"
#include "machine/machine.h"
#include "support/safe_text.h"
#include "support/text_stream.h"
#include "support/utf8.h"

namespace rux::exports {
namespace {

struct Language {
  std::string_view comment;
  std::string_view head;    // after the comment that names the machine
  std::string_view number;  // of a name and a number
  std::string_view text;    // of a name and a text between quotes
  std::string (*escaped)(std::string_view text);
};

bool IsPlain(unsigned char byte) {
  return byte >= 0x20 && byte < 0x7F && byte != '"' && byte != '\\' && byte != '?';
}

// Byte by byte.
std::string EscapedBytes(std::string_view text, const char* format) {
  std::string escaped;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    escaped += IsPlain(byte) ? std::string(1, c) : fmt::format(fmt::runtime(format), byte);
  }
  return escaped;
}

// In C, a hexadecimal escape has no end, and question marks begin trigraphs.
std::string EscapedForC(std::string_view text) { return EscapedBytes(text, "\\{:03o}"); }
std::string EscapedInHex(std::string_view text) { return EscapedBytes(text, "\\x{:02x}"); }

// As the package ruxmeta has texts: a byte that is not UTF-8 is a surrogate.
std::string EscapedForPython(std::string_view text) {
  std::string escaped;
  while (!text.empty()) {
    const support::Character character = support::FirstCharacter(text);
    text.remove_prefix(character.bytes.size());
    for (const char c : character.is_valid() ? std::string_view() : character.bytes)
      escaped += fmt::format("\\udc{:02x}", static_cast<unsigned char>(c));
    if (!character.is_valid()) continue;
    escaped += character.code < 0x80 && IsPlain(static_cast<unsigned char>(character.code))
                   ? std::string(character.bytes)
                   : fmt::format("\\U{:08x}", static_cast<std::uint32_t>(character.code));
  }
  return escaped;
}

constexpr Language kC = {"//", "#pragma once\n", "#define {} {}u\n", "#define {} \"{}\"\n",
                         EscapedForC};
constexpr Language kRust = {"//", "#![allow(dead_code)]\n", "pub const {}: u32 = {};\n",
                            "pub const {}: &[u8] = b\"{}\";\n", EscapedInHex};
constexpr Language kGo = {"//", "package machine\n", "const {} uint32 = {}\n",
                          "const {} = \"{}\"\n", EscapedInHex};
constexpr Language kPython = {"#", "", "{} = {}\n", "{} = \"{}\"\n", EscapedForPython};

std::string LineOf(const Language& language, const Constant& constant) {
  if (const auto* number = std::get_if<std::uint32_t>(&constant.value))
    return fmt::format(fmt::runtime(language.number), constant.name,
                       fmt::format("0x{:X}", *number));
  return fmt::format(fmt::runtime(language.text), constant.name,
                     language.escaped(std::get<std::string>(constant.value)));
}

void WriteConstants(const Language& language, const machine::Machine& machine, Account& account,
                    support::TextStream& out) {
  out += fmt::format("{} The constants of {}: written by rux export.\n", language.comment,
                     support::SafeText(machine.name()));
  out += language.head;
  for (const ConstantBlock& block : ConstantsOf(machine, account)) {
    if (block.constants.empty()) continue;
    out += fmt::format("\n{} {}\n", language.comment, block.title);
    for (const Constant& constant : block.constants) out += LineOf(language, constant);
  }
}

}  // namespace

void WriteC(const machine::Machine& machine, Account& account, support::TextStream& out) {
  WriteConstants(kC, machine, account, out);
}
void WriteRust(const machine::Machine& machine, Account& account, support::TextStream& out) {
  WriteConstants(kRust, machine, account, out);
}
void WriteGo(const machine::Machine& machine, Account& account, support::TextStream& out) {
  WriteConstants(kGo, machine, account, out);
}
void WritePython(const machine::Machine& machine, Account& account, support::TextStream& out) {
  WriteConstants(kPython, machine, account, out);
}

}  // namespace rux::exports
