// Compiled only to build the precompiled headers of the test programs.
