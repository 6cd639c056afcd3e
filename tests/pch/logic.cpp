// The donor of the precompiled headers of the headless test programs (tests/CMakeLists.txt).
