#include <gmock/gmock.h>

#ifdef __SANITIZE_ADDRESS__
// The geometry kernel keeps its table of drivers until the process ends, without holding on to it.
extern "C" const char* __lsan_default_suppressions() {
  return "leak:TPrsStd_DriverTable\n";
}
#endif

int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
