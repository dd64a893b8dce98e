extern "C" int QuintaraAbsentOffice();

// A library that can't be loaded where the one that it needs isn't found.
extern "C" int QuintaraStartSpreadsheet() {
  return QuintaraAbsentOffice();
}
