// What every public header of libruxcomp shares.
#ifndef RUXCOMP_API_H_
#define RUXCOMP_API_H_

// Marks what the library exports; everything else in it is hidden.
#define RUX_API __attribute__((visibility("default")))

#endif  // RUXCOMP_API_H_
