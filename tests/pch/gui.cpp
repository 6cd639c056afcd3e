// The donor of the precompiled headers of the window test programs (tests/CMakeLists.txt).
