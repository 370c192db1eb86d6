// What a profile can state, for the manual and as a JSON schema.
#ifndef DOCS_TABLES_PROFILE_TABLES_H_
#define DOCS_TABLES_PROFILE_TABLES_H_

#include <string>
#include <vector>

std::vector<std::vector<std::string>> ProfileRows();
std::vector<std::vector<std::string>> MeaningRows();
std::string ProfileSchema();

#endif  // DOCS_TABLES_PROFILE_TABLES_H_
