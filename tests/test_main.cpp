#include <gmock/gmock.h>

#ifdef __SANITIZE_ADDRESS__
// The geometry kernel keeps its tables, and what it made to load a file, until the process ends
// without holding on to them. So does LibreOffice's library with the descriptions of its types.
extern "C" const char* __lsan_default_suppressions() {
  return "leak:TPrsStd_DriverTable\nleak:libTKernel\nleak:libTKXSBase\nleak:libuno_cppu\n";
}
#endif

int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
