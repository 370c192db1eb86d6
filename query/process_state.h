// Everything that the library keeps from one call to the next.
//
// All of it belongs to the process. The objects of the source model whose order of construction
// counts are in frontend/static_objects.cpp.
//
// clang-format off
//   kept by ResetProcessState:
//   g_Parse                         the reader plug-in, and the script that is open
//   standard_streams                keeps them ready for the host's Output
//   plugin::lookup                  how the plug-in's operations are found
//   findings::detail::sink          where messages go
//   detail::SeedOfProcess           what hashes depend on
//
//   reset by it, as by gccCompEnd or gdUnInit:
//   CGSSection<...>::m_sHeader      the sections of each kind
//   CRUXObj::m_arena                the entries, values and texts of the source model
//   InternedString::m_texts         the texts of names, besides InternedString::kEmpty
//   InternedString::m_keywords      those of keywords
//   g_tblPreDefine                  the defined words
//
//   reset by it, as by gcUnInit:
//   g_GCHead                        the compiled records
//   generation                      how often they changed
//   SectionIndex::m_current         what was found in them
//
//   reset by it, and otherwise kept until the library is unloaded:
//   CRUXSection::m_svpHSection      the kinds of section in their order of appearance
//   CRUXObj::m_svstrIncFiles        the file table
//   CRUXObj::m_lastFile             its row that was used last; not looked at in an empty table
//   CRUXParse::m_opened             how many scripts the run opened; gccCompStart also resets it
//   findings::detail::examined      what is being examined
//   g_tbl..., g_idx...              the symbol tables and their counters; ReadMeta replaces them
//   g_tblTableData                  the cells of the tables; ReadMeta replaces them
//   incFilesWritten, incFilesRead   whether the file table was written or read
//   g_dwLastError, g_dwLastErrorD   the last-error words
// clang-format on
#ifndef QUERY_PROCESS_STATE_H_
#define QUERY_PROCESS_STATE_H_

namespace ruxcomp::core {

// Makes the next run, or the next loaded file, find what it would find in a new process. No script
// may be open. Handles and texts that the library handed out are no longer valid.
void ResetProcessState();

}  // namespace ruxcomp::core

#endif  // QUERY_PROCESS_STATE_H_
