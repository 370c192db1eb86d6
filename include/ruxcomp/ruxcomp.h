// The whole interface of libruxcomp: compiling scripts, querying meta files and debug meta files,
// and the read model and the verifier of meta files.
#ifndef RUXCOMP_RUXCOMP_H_
#define RUXCOMP_RUXCOMP_H_

#include "ruxcomp/compile.h"
#include "ruxcomp/data.h"
#include "ruxcomp/debug.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/model.h"
#include "ruxcomp/output.h"
#include "ruxcomp/query.h"
#include "ruxcomp/records.h"
#include "ruxcomp/verify.h"

#endif  // RUXCOMP_RUXCOMP_H_
