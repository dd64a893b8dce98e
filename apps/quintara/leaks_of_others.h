#pragma once

// For the one source file of a program that is built to find leaks.
#ifdef __SANITIZE_ADDRESS__
// The geometry kernel keeps its tables, and what it made to load a file, until the process ends
// without holding on to them. So does LibreOffice's library with the descriptions of its types.
extern "C" const char* __lsan_default_suppressions() {
  return "leak:TPrsStd_DriverTable\nleak:libTKernel\nleak:libTKXSBase\nleak:libuno_cppu\n";
}
// What a program says on its errors is tested.
extern "C" const char* __lsan_default_options() {
  return "print_suppressions=0";
}
#endif
