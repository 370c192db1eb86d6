// The numbers of compiled files as a header for C.
#ifndef DOCS_TABLES_C_HEADER_H_
#define DOCS_TABLES_C_HEADER_H_

#include <string>

// include/ruxmeta/numbers.h.
std::string CHeader();

#endif  // DOCS_TABLES_C_HEADER_H_
