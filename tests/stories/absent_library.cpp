extern "C" int QuintaraAbsentOffice();

extern "C" int QuintaraAbsentOffice() {
  return 0;
}
