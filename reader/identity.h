// Which reader a loaded object has.
//
// Every program and plug-in that has this reader inside carries a note with a digest of the sources
// that it is made of. A program that finds its own digest in a plug-in may do itself what it would
// ask the plug-in for.
#ifndef READER_IDENTITY_H_
#define READER_IDENTITY_H_

namespace ruxcomp::reader {

// Whether the object that dlopen gave the handle for carries the digest of this reader. Null has
// none.
bool IsThisReader(void* handle);

}  // namespace ruxcomp::reader

#endif  // READER_IDENTITY_H_
