#include "apps/hosts/user_classes.h"

int main() {
  quintara::test::ShowUserClasses();
  return 0;
}
