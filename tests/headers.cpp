// Nothing: CMakeLists.txt tells what this is for.
