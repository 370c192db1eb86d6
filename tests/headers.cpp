// Empty; CMakeLists.txt says what it is for.
