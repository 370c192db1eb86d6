#include "inspect/meta_view.h"

#include <fmt/format.h>

#include <optional>
#include <string>
#include <utility>

#include "compiled/compiled_file.h"
#include "compiled/datum.h"
#include "ruxcomp/file/header.h"
#include "ruxcomp/model.h"
#include "ruxcomp/model/handles.h"
#include "ruxcomp/model/value.h"
#include "ruxcomp/records.h"

namespace rux::inspect {

MetaView::MetaView(const std::string& path) : path_(path) {
  compiled::CompiledFile file(path, compiled::Form::kMeta);
  info_ = {file.summary().version, file.summary().creation_time};
  model_ = ruxcomp::ReadModel(std::move(file).TakeBytes());
}

compiled::Datum DatumOf(const ruxcomp::Value& value) {
  if (const std::optional<compiled::Datum> immediate = compiled::ImmediateDatum(value.index()))
    return *immediate;
  switch (value.kind()) {
    case RUX_DATA_NUMBER:
      return compiled::NumberDatum(value.number());
    case RUX_DATA_STRING:
      return compiled::TextDatum(value.index(), value.text());
    default:
      return {};
  }
}

std::string KeyOf(const ruxcomp::Section& section, const ruxcomp::Entry& entry) {
  std::string key =
      compiled::KeyText(section.kind(), entry.identifier(), DatumOf(entry.identity()));
  return key.empty() ? fmt::format("(entry 0x{:08X})", entry.identifier()) : key;
}

}  // namespace rux::inspect
