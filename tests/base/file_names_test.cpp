#include "base/file_names.h"

#include <gtest/gtest.h>

#include <string>

#include "base/failure.h"
#include "base/text.h"

namespace quintara {
namespace {

int NumberOfFailure(const std::string& name) {
  try {
    RequireFileName(name);
  } catch (const Failure& failure) {
    return failure.Number();
  }
  return 0;
}

TEST(FileNames, OrdinaryNamesAreTaken) {
  for (const std::string name : {"BOLT.stp", "CAR Matrix.xml", "Geh\xC3\xA4use.ZVAProduct", ".hidden", "CONSOLE",
                                 "COM10.stp", "LPT.txt", "a..b"}) {
    EXPECT_EQ(NumberOfFailure(name), 0) << name;
  }
}

TEST(FileNames, WhatIsNoPlainNameIsRefused) {
  for (const std::string name :
       {"",      ".",      "..",    "../x",     "..\\..\\x", "/x",       "\\\\server\\x", "C:x",
        "C:\\x", "x/y",    "x/",    "x\\",      "a*",        "a?",       "a|b",           "a<b",
        "\"",    "a\nb",   "a\x7F", "x.",       "x ",        "x. .",     "CON",           "con.txt",
        "AUX ",  "nul .x", "prn.",  "conin$.x", "COM1",      "lpt9.stp", "COM\xC2\xB9",   "lpt\xC2\xB3.a",
        "COM0",  "\xFF"}) {
    EXPECT_EQ(NumberOfFailure(name), failure::kInvalidCall) << name;
  }
  EXPECT_EQ(NumberOfFailure(std::string(256, 'x')), failure::kInvalidCall);
  EXPECT_EQ(NumberOfFailure(std::string("a\0b", 3)), failure::kInvalidCall);
}

TEST(FileNames, APathStaysInItsFolder) {
  EXPECT_EQ(PathIn("folder", "BOLT.stp"), FromPath(ToPath("folder") / "BOLT.stp"));
  EXPECT_THROW(PathIn("folder", "../BOLT.stp"), Failure);
}

}  // namespace
}  // namespace quintara
