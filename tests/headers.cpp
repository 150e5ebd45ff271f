// Compiled only for the headers that come before it; see the CMakeLists.txt of this folder.
