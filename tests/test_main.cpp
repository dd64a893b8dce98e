#include <gmock/gmock.h>

#include "quintara/leaks_of_others.h"

int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
