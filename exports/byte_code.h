// Amounts as the bytes of sensor records, which are linear: (byte * step) * 10^exponent.
#ifndef EXPORTS_BYTE_CODE_H_
#define EXPORTS_BYTE_CODE_H_

#include <cstdint>
#include <vector>

#include "exports/amount.h"

namespace rux::exports {

struct ByteCode {
  int step = 1;            // 1 to 511
  int exponent = 0;        // -8 to 7
  bool is_signed = false;  // bytes are from -128 to 127, not from 0 to 255

  // The nearest byte: as a number, with its sign.
  int ByteFor(const Amount& amount) const;
  // What a byte measures.
  Amount AmountOf(int byte) const { return {std::int64_t{byte} * step, 1, exponent}; }
};

// The finest one in which all amounts are exact. When they have none in common, the one that keeps
// most of them exact among those that are at most twice as coarse as they need be.
ByteCode CodeFor(const std::vector<Amount>& amounts);

}  // namespace rux::exports

#endif  // EXPORTS_BYTE_CODE_H_
