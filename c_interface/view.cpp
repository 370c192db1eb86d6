// What programs read without calls: the layout of models, as C sees it.
#include <cstddef>
#include <cstdint>

#include "c_interface/handles.h"
#include "ruxcomp/model.h"
#include "ruxcomp/model/records.h"
#include "ruxcomp/model/tables.h"
#include "ruxmeta.h"

using rux::c_interface::IsKnown;
using rux::c_interface::ToC;
using ruxcomp::detail::Records;
using ruxcomp::detail::TableItem;
using ruxcomp::detail::Tables;

static_assert(sizeof(ruxmeta_symbol) == sizeof(TableItem) &&
              offsetof(ruxmeta_symbol, number) == offsetof(TableItem, number) &&
              offsetof(ruxmeta_symbol, text) == offsetof(TableItem, text));
static_assert(sizeof(ruxmeta_symbols) == sizeof(Tables::Row) &&
              offsetof(ruxmeta_symbols, symbols) == offsetof(Tables::Row, items) &&
              offsetof(ruxmeta_symbols, count) == offsetof(Tables::Row, size));
static_assert(RUXMETA_NO_TEXT == TableItem::kNumber);

ruxmeta_value ruxmeta_index_value(const ruxmeta_model* model, uint32_t index) {
  if (model == nullptr) return ToC(ruxcomp::Value());
  return ToC(model->model.records()->tables.Resolve(index));
}

ruxmeta_status ruxmeta_get_view(const ruxmeta_model* model, ruxmeta_view* view) {
  if (model == nullptr || view == nullptr || !IsKnown(view)) {
    return RUXMETA_BAD_ARGUMENT;
  }
  const Records& records = *model->model.records();
  view->model = model;
  view->owner = &records;
  view->records = records.At(0)->bytes;
  view->places = records.sections.all().begin();
  view->kind_begins = records.sections.kind_begins().data();
  view->kinds = ruxcomp::detail::SectionList::kKinds;
  view->classes = reinterpret_cast<const ruxmeta_symbols*>(records.tables.rows().data());
  view->class_count = records.tables.rows().size();
  view->texts = records.tables.texts();
  return RUXMETA_OK;
}
