// How long the objects of the library live.
#ifndef FRONTEND_LIFETIME_H_
#define FRONTEND_LIFETIME_H_

// For every object that lives from load to unload and has a constructor. A program may carry the
// library inside, and its own objects may ask in their constructors and destructors: the library's
// are made before them and destroyed after them. Those of one file keep their order.
#define RUX_FROM_LOAD_TO_UNLOAD __attribute__((init_priority(200)))

#endif  // FRONTEND_LIFETIME_H_
