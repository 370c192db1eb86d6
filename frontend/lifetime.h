// How long the objects of the library live.
#ifndef FRONTEND_LIFETIME_H_
#define FRONTEND_LIFETIME_H_

// For every object that lives from load to unload and has a constructor. A program may be linked
// with the library as an archive, and constructors and destructors of its own objects may call it:
// the library's objects are made before them and destroyed after them. Objects of one file keep
// their order.
#define RUX_FROM_LOAD_TO_UNLOAD __attribute__((init_priority(200)))

#endif  // FRONTEND_LIFETIME_H_
