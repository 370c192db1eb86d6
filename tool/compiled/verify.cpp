#include "tool/compiled/verify.h"

#include "tool/compiled/debug_meta.h"
#include "tool/compiled/meta.h"

namespace rux {

Faults Verify(std::string_view bytes) {
  Faults faults;
  if (IsDebugMetaBytes(bytes)) {
    DecodeDebugMeta(bytes, faults);
  } else if (IsMetaBytes(bytes)) {
    DecodeMeta(bytes, faults);
  } else {
    faults.Add({0, "header", "magic", "this is neither a meta file nor a debug meta file"});
  }
  return faults;
}

}  // namespace rux
