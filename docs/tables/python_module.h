// The tables of the language as a module of the Python package.
#ifndef DOCS_TABLES_PYTHON_MODULE_H_
#define DOCS_TABLES_PYTHON_MODULE_H_

#include <string>

// python/ruxmeta/_language.py: a statement for each table; python/ruxmeta/_rows.py has the types of
// its rows.
std::string PythonModule();

#endif  // DOCS_TABLES_PYTHON_MODULE_H_
