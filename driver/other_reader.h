// Commands that check texts in the place of files.
#ifndef DRIVER_OTHER_READER_H_
#define DRIVER_OTHER_READER_H_

namespace rux::driver {

// Another reader plug-in knows no texts but those of the files. Throws a Failure when there is one:
// what cannot be done with it ("check fixed scripts").
void RefuseOtherReader(const char* what);

}  // namespace rux::driver

#endif  // DRIVER_OTHER_READER_H_
