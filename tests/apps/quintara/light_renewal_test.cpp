#include "quintara/light_renewal.h"

#include <filesystem>

#include "apps/quintara/cli_fixture.h"
#include "base/failure.h"
#include "base/text.h"
#include "geometry/occ_geometry.h"
#include "hosts/native/native_files.h"

namespace quintara::test {
namespace {

namespace fs = std::filesystem;

class LightRenewal : public CliWithAs1 {
 protected:
  void Renew(const std::string& name) {
    RenewLightOf(work.Path(name), host, *geometry, [](double, const std::string&) {});
  }
  bool IsThere(const std::string& name) const { return fs::exists(ToPath(work.Path(name))); }
  std::string PartNumberIn(const std::string& name) { return PartNumberOfFile(work.Path(name), *files); }

  std::shared_ptr<NativeContents> files = std::make_shared<NativeContents>(gate);
  CadHost host{{gate, files, {}}};
  std::unique_ptr<Geometry> geometry = MakeOccGeometry();
};

TEST_F(LightRenewal, OfAPartBearsItsPartNumber) {
  Renew("nut.stp");

  EXPECT_EQ(PartNumberIn("nut.stp.lwt"), "nut");
}

TEST_F(LightRenewal, OfAnAssemblyBearsItsPartNumber) {
  Renew("rod-assembly.ZVAProduct");

  EXPECT_EQ(PartNumberIn("rod-assembly.ZVAProduct.lwt"), "rod-assembly");
}

TEST_F(LightRenewal, ReplacesWhatIsThere) {
  work.Write("nut.stp.lwt", "old");

  Renew("nut.stp");

  EXPECT_EQ(PartNumberIn("nut.stp.lwt"), "nut");
}

TEST_F(LightRenewal, ClosesWhatItOpened) {
  Renew("rod-assembly.ZVAProduct");

  EXPECT_EQ(host.Application()->Documents()->Count(), 0);
}

TEST_F(LightRenewal, LeavesADocumentOpenThatWasOpen) {
  const auto open = host.Application()->Documents()->Open(work.Path("rod-assembly.ZVAProduct"));

  Renew("rod-assembly.ZVAProduct");

  EXPECT_EQ(open->FullName(), work.Path("rod-assembly.ZVAProduct"));
}

TEST_F(LightRenewal, FailsForAnAssemblyWithoutAFileOfAComponent) {
  fs::remove(ToPath(work.Path("rod.stp")));
  fs::remove(ToPath(work.Path("rod-assembly.ZVAProduct.lwt")));

  EXPECT_THROW(Renew("rod-assembly.ZVAProduct"), Failure);
  EXPECT_FALSE(IsThere("rod-assembly.ZVAProduct.lwt"));
}

TEST_F(LightRenewal, DoesNothingForOtherFiles) {
  work.Write("notes.txt", "text");

  Renew("notes.txt");

  EXPECT_FALSE(IsThere("notes.txt.lwt"));
}

TEST_F(LightRenewal, FailsForADamagedPartAndKeepsTheOldOne) {
  work.Write("nut.stp", "no STEP at all");
  work.Write("nut.stp.lwt", "old");

  EXPECT_THROW(Renew("nut.stp"), Failure);
  EXPECT_EQ(files->Read(work.Path("nut.stp.lwt")), "old");
}

}  // namespace
}  // namespace quintara::test
