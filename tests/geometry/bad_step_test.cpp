#include <unistd.h>

#include <filesystem>
#include <random>

#include "base/failure.h"
#include "base/text.h"
#include "geometry/geometry_fixture.h"

namespace quintara::test {
namespace {

using testing::AnyOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace fs = std::filesystem;

class BadStep : public GeometryTest {
 protected:
  std::string As1() { return BytesOf(DataFile("as1-oc-214.stp")); }

  // A damaged file is refused by name, or read when the damage makes another good file of it.
  void ExpectRefusedOrRead(const std::string& text) {
    try {
      EXPECT_FALSE(ReadText(text)->Structure().definitions.empty());
    } catch (const Failure& failure) {
      EXPECT_THAT(failure.Description(), StartsWith(Path("given.stp") + ": "));
    }
  }

  std::string CopyOfSet(const std::string& name) {
    fs::copy(ToPath(DataFile(name)), ToPath(Path(name)));
    return Path(name + "/" + name + ".stp");
  }
};

// Root may read everything: for a while this process is somebody else.
class OrdinaryUser {
 public:
  OrdinaryUser() : wasRoot_(geteuid() == 0) {
    constexpr uid_t kNobody = 65534;
    if (wasRoot_ && seteuid(kNobody) != 0) ADD_FAILURE() << "root can't be somebody else";
  }
  ~OrdinaryUser() {
    if (wasRoot_ && seteuid(0) != 0) ADD_FAILURE() << "root can't be root again";
  }
  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;

 private:
  bool wasRoot_;
};

TEST_F(BadStep, IsNamedWhenItIsMissing) {
  EXPECT_EQ(FailureOf([&] { Read(Path("no.stp")); }),
            Path("no.stp") + ": could not be opened (No such file or directory)");
}

TEST_F(BadStep, IsNamedWhenItIsAFolder) {
  EXPECT_EQ(FailureOf([&] { Read(Path("")); }), Path("") + ": is a folder");
}

TEST_F(BadStep, IsNamedWhenItMayNotBeRead) {
  folder_.Write("given.stp", As1());
  fs::permissions(ToPath(Path("given.stp")), fs::perms::none);
  const OrdinaryUser ordinary;

  const auto text = FailureOf([&] { Read(Path("given.stp")); });

  EXPECT_EQ(text, Path("given.stp") + ": could not be opened (Permission denied)");
}

TEST_F(BadStep, IsNamedWhenItIsEmpty) {
  EXPECT_EQ(FailureOfText(""), Path("given.stp") + ": is empty");
}

TEST_F(BadStep, IsNamedWhenItIsNoStepFile) {
  EXPECT_EQ(FailureOfText("solid x\nendsolid"), Path("given.stp") + ": is not a STEP file");
  EXPECT_EQ(FailureOfText(std::string(100'000, '\0')), Path("given.stp") + ": is not a STEP file");
}

TEST_F(BadStep, IsCutOffWherever) {
  const auto whole = As1();
  std::mt19937 chance(7);

  for (int i = 0; i < 40; ++i) {
    const auto length = std::uniform_int_distribution<std::size_t>(20, whole.size() - 20)(chance);
    EXPECT_EQ(FailureOfText(whole.substr(0, length)), Path("given.stp") + ": is cut off: its end mark is missing");
  }
}

TEST_F(BadStep, IsRefusedWithAPieceOfItsGeometryMissing) {
  const auto whole = As1();
  const auto first = whole.find("ADVANCED_FACE");
  const auto last = whole.find("#744 = PRODUCT") - 2000;
  std::mt19937 chance(8);

  for (int i = 0; i < 40; ++i) {
    auto text = whole;
    text.erase(std::uniform_int_distribution<std::size_t>(first, last)(chance), 1500);
    EXPECT_THAT(FailureOfText(text), StartsWith(Path("given.stp") + ": is "));
  }
}

TEST_F(BadStep, NeverEndsThisProcessWhateverItsBytes) {
  const auto whole = As1();
  std::mt19937 chance(9);
  std::uniform_int_distribution<std::size_t> place(0, whole.size() - 1);

  for (int i = 0; i < 60; ++i) {
    auto text = whole;
    for (int n = 0; n <= i % 4; ++n) text[place(chance)] = static_cast<char>('!' + chance() % 90);
    ExpectRefusedOrRead(text);
  }
}

TEST_F(BadStep, NeverEndsThisProcessWhateverItRefersTo) {
  const auto whole = As1();
  std::mt19937 chance(10);
  std::uniform_int_distribution<std::size_t> place(0, whole.size() - 1000);

  for (int i = 0; i < 60; ++i) {
    auto text = whole;
    const auto at = text.find(",#", place(chance));
    const auto end = text.find_first_of(",)", at + 2);
    text.replace(at, end - at, ",#" + std::to_string(1 + chance() % 6000));
    ExpectRefusedOrRead(text);
  }
}

TEST_F(BadStep, IsRefusedWhenAnAssemblyHoldsItself) {
  auto text = As1();
  for (auto at = text.find(",#39,#742,$)"); at != std::string::npos; at = text.find(",#39,#742,$)")) {
    text.replace(at, 12, ",#39,#39,$) ");
  }

  EXPECT_THAT(FailureOfText(text), StartsWith(Path("given.stp") + ": could not be read"));
}

TEST_F(BadStep, IsRefusedWhenItHoldsNothing) {
  const auto nothing =
      "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\nFILE_NAME('','',(''),(''),'','','');\n"
      "FILE_SCHEMA(('AUTOMOTIVE_DESIGN'));\nENDSEC;\nDATA;\nENDSEC;\nEND-ISO-10303-21;\n";

  EXPECT_THAT(FailureOfText(nothing), AnyOf(EndsWith(": holds no part and no assembly"), HasSubstr(": is damaged")));
}

TEST_F(BadStep, NamesAFileOfTheAssemblyThatIsMissing) {
  const auto path = CopyOfSet("s1_pe_214");
  fs::remove(ToPath(Path("s1_pe_214/foot_asm.stp")));

  const auto text = FailureOf([&] { Read(path); });

  EXPECT_THAT(text, StartsWith(path + ": a file that it refers to could not be read: "));
  EXPECT_THAT(text, HasSubstr("foot_asm.stp: could not be opened (No such file or directory)"));
}

TEST_F(BadStep, NamesAPartOfAnAssemblyFileThatIsMissing) {
  const auto path = CopyOfSet("s1-c5-214");
  fs::remove(ToPath(Path("s1-c5-214/HEAD_BACK.stp")));

  EXPECT_THAT(FailureOf([&] { Read(path); }), HasSubstr("HEAD_BACK.stp: could not be opened"));
}

TEST_F(BadStep, NamesAFileOfTheAssemblyThatIsCutOff) {
  const auto path = CopyOfSet("s1-tu-203");
  const auto head = Path("s1-tu-203/headfront.stp");
  fs::resize_file(ToPath(head), fs::file_size(ToPath(head)) / 2);

  EXPECT_THAT(FailureOf([&] { Read(path); }), EndsWith("headfront.stp: is cut off: its end mark is missing"));
}

}  // namespace
}  // namespace quintara::test
