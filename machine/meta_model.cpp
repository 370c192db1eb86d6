#include "machine/meta_model.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "compiled/compiled_file.h"
#include "ruxcomp/file/header.h"
#include "ruxcomp/model.h"

namespace rux::machine {

ruxcomp::Model OpenModel(const std::string& path, std::string_view bytes) {
  compiled::ExpectForm(path, bytes, ruxcomp::file::Form::kMeta);
  std::optional<ruxcomp::Model> opened = ruxcomp::Model::OpenBytes(bytes);
  if (!opened) throw compiled::Unsound(path, bytes);
  return std::move(*opened);
}

}  // namespace rux::machine
