#include <com/sun/star/beans/NamedValue.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <map>
#include <utility>
#include <vector>

#include "hosts/office/connection.h"
#include "hosts/office/office_fixture.h"

namespace quintara::test {
namespace {

namespace uno = com::sun::star::uno;
using com::sun::star::beans::NamedValue;
using com::sun::star::beans::PropertyValue;
using office::ToUno;
using testing::AllOf;
using testing::HasSubstr;

template <class Named>
uno::Sequence<Named> Sequence(const std::vector<std::pair<const char*, uno::Any>>& values) {
  uno::Sequence<Named> sequence(static_cast<sal_Int32>(values.size()));
  auto* next = sequence.getArray();
  for (const auto& [name, value] : values) {
    next->Name = ToUno(name);
    next++->Value = value;
  }
  return sequence;
}

uno::Any Text(const char* text) {
  return uno::Any(ToUno(text));
}

// The bytes of a workbook that LibreOffice wrote with a password. Each is made once.
std::string Encrypted(const char* filter) {
  static std::map<std::string, std::string> made;
  auto& bytes = made[filter];
  if (!bytes.empty()) return bytes;
  const TemporaryFolder folder;
  office::Connection connection(QUINTARA_OFFICE_PROGRAM "/soffice.bin", {});
  const auto workbook = connection.desktop->loadComponentFromURL("private:factory/scalc", "_blank", 0,
                                                                 Sequence<PropertyValue>({{"Hidden", uno::Any(true)}}));
  const auto storable = connection.Query<com::sun::star::frame::XStorable>(workbook);
  // The older format takes the password, the newer one this.
  const auto encryption = Sequence<NamedValue>({{"CryptoType", Text("Standard")}, {"OOXPassword", Text("secret")}});
  const auto how = Sequence<PropertyValue>(
      {{"FilterName", Text(filter)}, {"Password", Text("secret")}, {"EncryptionData", uno::Any(encryption)}});
  storable->storeToURL(ToUno(office::FileUrl(folder.Path("made"))), how);
  return bytes = folder.Read("made");
}

class AnEncryptedWorkbook : public Spreadsheet {
 protected:
  std::string OpenFailure(const std::string& bytes) const {
    folder.Write("odd.xls", bytes);
    const auto open = [&] { app->Workbooks()->Open(folder.Path("odd.xls")); };
    EXPECT_EQ(NumberOf(open), failure::kRefused);
    EXPECT_EQ(app->Workbooks()->Count(), 0);
    return DescriptionOf(open);
  }
};

TEST_F(AnEncryptedWorkbook, FailsSinceNobodyKnowsThePassword) {
  EXPECT_THAT(OpenFailure(Encrypted("MS Excel 97")), AllOf(HasSubstr(folder.Path("odd.xls")), HasSubstr("password")));
}

// Which is a compound file as the older format is, with nothing of a workbook to be seen in it.
TEST_F(AnEncryptedWorkbook, OfTheNewerFormatFailsWhateverItIsCalled) {
  const auto bytes = Encrypted("Calc MS Excel 2007 XML");
  ASSERT_TRUE(bytes.starts_with("\xD0\xCF\x11\xE0"));

  EXPECT_THAT(OpenFailure(bytes), AllOf(HasSubstr(folder.Path("odd.xls")), HasSubstr("password")));
}

TEST_F(AnEncryptedWorkbook, LeavesTheApplicationForTheNext) {
  OpenFailure(Encrypted("MS Excel 97"));

  folder.Write("plain.xls", WorkbookWith("x"));
  app->Workbooks()->Open(folder.Path("plain.xls"));

  EXPECT_EQ(Value("A1"), Variant("x"));
}

TEST_F(AnEncryptedWorkbook, OfTheNewerFormatThatIsCutOffFails) {
  const auto bytes = Encrypted("Calc MS Excel 2007 XML");

  EXPECT_THAT(OpenFailure(bytes.substr(0, bytes.size() / 2)), HasSubstr("damaged"));
}

}  // namespace
}  // namespace quintara::test
