// A component that was built as another version than the program.

extern "C" const char* ZRDllVersion() { return "0.0.1"; }
