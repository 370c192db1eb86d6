#include "inspect/meta_model.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "compiled/compiled_file.h"
#include "ruxcomp/file/header.h"
#include "ruxcomp/model.h"
#include "ruxcomp/verify.h"

namespace rux::inspect {

ruxcomp::Model OpenModel(const std::string& path, std::string_view bytes) {
  constexpr auto kForm = ruxcomp::file::Form::kMeta;
  compiled::ExpectForm(path, bytes, kForm);
  ruxcomp::Fault fault;
  std::optional<ruxcomp::Model> opened = ruxcomp::Model::OpenBytes(bytes, &fault);
  if (!opened) throw compiled::Unsound(path, kForm, fault);
  return std::move(*opened);
}

}  // namespace rux::inspect
