// Making models, and what is known of them as a whole.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "c_interface/handles.h"
#include "ruxcomp/file/fault.h"
#include "ruxcomp/model.h"
#include "ruxcomp/model/records.h"
#include "ruxcomp/records.h"
#include "ruxcomp/verify.h"
#include "ruxmeta.h"

namespace rux::c_interface {
namespace {

using ruxcomp::Fault;
using ruxcomp::Model;

void Store(const Fault& found, ruxmeta_fault& fault) {
  const std::string text = ruxcomp::FaultText(found);
  const std::size_t size = std::min(text.size(), sizeof fault.text - 1);
  fault.offset = found.offset;
  std::memcpy(fault.text, text.data(), size);
  fault.text[size] = '\0';
}

// A model of what open() returns, which throws only where memory is missing. `source`: null is
// refused.
template <class Open>
ruxmeta_status Make(const void* source, Open open, ruxmeta_model** model,
                    ruxmeta_fault* fault) noexcept {
  if (model == nullptr) return RUXMETA_BAD_ARGUMENT;
  *model = nullptr;
  if (source == nullptr || (fault != nullptr && !IsKnown(fault))) return RUXMETA_BAD_ARGUMENT;
  try {
    Fault found;
    std::optional<Model> opened = open(&found);
    if (opened) {
      auto made = std::make_unique<ruxmeta_model>();
      made->model = std::move(*opened);
      *model = made.release();
      return RUXMETA_OK;
    }
    if (fault != nullptr) Store(found, *fault);
    return ruxcomp::file::IsUnreadable(found) ? RUXMETA_CANNOT_READ : RUXMETA_NOT_SOUND;
  } catch (const std::bad_alloc&) {
    return RUXMETA_NO_MEMORY;
  }
}

}  // namespace
}  // namespace rux::c_interface

using rux::c_interface::IsKnown;
using rux::c_interface::Make;
using ruxcomp::Fault;
using ruxcomp::Model;

const char* ruxmeta_version() { return RUXMETA_VERSION; }

const char* ruxmeta_status_text(int status) {
  switch (status) {
    case RUXMETA_OK:
      return "fine";
    case RUXMETA_CANNOT_READ:
      return "the file cannot be read";
    case RUXMETA_NOT_SOUND:
      return "not a sound meta file";
    case RUXMETA_NO_MEMORY:
      return "not enough memory";
    case RUXMETA_BAD_ARGUMENT:
      return "a null pointer, or a struct of unknown size";
    default:
      return "unknown status";
  }
}

ruxmeta_status ruxmeta_open(const char* path, ruxmeta_model** model, ruxmeta_fault* fault) {
  return Make(
      path, [&](Fault* found) { return Model::Open(path, found); }, model, fault);
}

ruxmeta_status ruxmeta_load(const char* path, ruxmeta_model** model, ruxmeta_fault* fault) {
  return Make(
      path, [&](Fault* found) { return Model::LoadVerified(path, found); }, model, fault);
}

ruxmeta_status ruxmeta_open_bytes(const void* bytes, size_t size, ruxmeta_model** model,
                                  ruxmeta_fault* fault) {
  const std::string_view view(static_cast<const char*>(bytes), size);
  return Make(
      bytes, [&](Fault* found) { return Model::OpenBytes(view, found); }, model, fault);
}

void ruxmeta_close(ruxmeta_model* model) { delete model; }

ruxmeta_status ruxmeta_get_info(const ruxmeta_model* model, ruxmeta_info* info) {
  if (model == nullptr || info == nullptr || !IsKnown(info)) {
    return RUXMETA_BAD_ARGUMENT;
  }
  const tagMETAFILEINFO stated = model->model.info();
  info->format_version = stated.version;
  info->creation_time = stated.creationTime;
  return RUXMETA_OK;
}

int ruxmeta_find_group(const ruxmeta_model* model, const char* name, uint32_t* ordinal) {
  if (model == nullptr || name == nullptr || ordinal == nullptr) return 0;
  const std::optional<std::uint32_t> found = model->model.group_index(name);
  if (!found) return 0;
  *ordinal = *found;
  return 1;
}

const uint8_t* ruxmeta_table_cells(const ruxmeta_model* model, size_t ordinal) {
  if (model == nullptr || ordinal > UINT32_MAX) return nullptr;
  const ruxcomp::TableCells* cells = model->model.table(static_cast<std::uint32_t>(ordinal));
  return cells != nullptr ? cells->data() : nullptr;
}
