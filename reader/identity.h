// Which reader a loaded object has.
//
// Every program and plug-in with this reader inside carries a note with a digest of the reader's
// sources. A program that finds its own digest in a plug-in may do the plug-in's work itself.
#ifndef READER_IDENTITY_H_
#define READER_IDENTITY_H_

namespace ruxcomp::reader {

// Whether the object with that handle of dlopen carries the digest of this reader. A null handle
// does not.
bool IsThisReader(void* handle);

}  // namespace ruxcomp::reader

#endif  // READER_IDENTITY_H_
