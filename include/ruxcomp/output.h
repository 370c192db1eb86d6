// The message sink that the host supplies.
//
// Every message of the library goes through one function, which the host program defines. A program
// that is linked with the library exports it automatically; one that loads the library at run time
// is linked with -rdynamic.
//
//   extern "C" void Output(unsigned int size, const char* format, ...) {
//     va_list arguments;
//     va_start(arguments, format);
//     std::vfprintf(stderr, format, arguments);
//     va_end(arguments);
//   }
//
// The library calls it on the thread that called the library. It also calls it while it is being
// loaded, when it cannot load its reader plug-in: before the host's main() and before the
// constructors of the host's own global objects. An Output that uses globals must cope with that.
#ifndef RUXCOMP_OUTPUT_H_
#define RUXCOMP_OUTPUT_H_

extern "C" {

// size    always 2048: room enough for the formatted text of any message with short names
// format  a printf format that ends with a line feed; %s takes const char*, %u unsigned int. The
//         texts are valid during the call only.
void Output(unsigned int size, const char* format, ...) __attribute__((format(printf, 2, 3)));

}  // extern "C"

#endif  // RUXCOMP_OUTPUT_H_
