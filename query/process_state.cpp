#include "query/process_state.h"

#include <variant>

#include "backend/symbol_tables.h"
#include "debugmeta/bytes.h"
#include "findings/origin.h"
#include "frontend/obj.h"
#include "frontend/parse.h"
#include "frontend/section.h"
#include "ruxcomp/compile.h"
#include "ruxcomp/data.h"
#include "ruxcomp/debug.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/query.h"

namespace ruxcomp::core {

namespace {

void ResetSymbolTables() {
  for (const SymbolTable& row : kSymbolTables) {
    std::visit([](auto* table) { table->clear(); }, row.table);
    *row.counter = row.base;
  }
  g_tblTableData.clear();
}

}  // namespace

void ResetProcessState() {
  gcUnInit();
  gccCompEnd();
  CRUXSection::m_svpHSection.clear();
  CRUXObj::m_svstrIncFiles.clear();
  CRUXParse::CountFromZero();
  findings::Examine({});
  ResetSymbolTables();
  incFilesWritten = false;
  incFilesRead = false;
  gcSetLastError(RUX_ERROR_OK);
  gdSetLastError(RUX_ERROR_OK);
}

}  // namespace ruxcomp::core
