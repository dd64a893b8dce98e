#include <signal.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <thread>

#include "hosts/office/office_fixture.h"
#include "hosts/office/office_process.h"

namespace quintara::test {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;

// A process that nobody has collected yet has ended too.
bool IsThere(int process) {
  std::ifstream stat("/proc/" + std::to_string(process) + "/stat");
  const std::string text{std::istreambuf_iterator<char>(stat), {}};
  return !text.empty() && text.substr(text.rfind(')')).find(" Z ") == std::string::npos;
}

bool EndsSoon(int process) {
  for (int round = 0; round < 400 && IsThere(process); ++round) std::this_thread::sleep_for(25ms);
  return !IsThere(process);
}

// The files of pipes of LibreOffice that bear this name.
bool HasPipe(const std::string& name) {
  for (const auto& file : std::filesystem::directory_iterator("/tmp")) {
    if (file.path().filename().string().ends_with(name)) return true;
  }
  return false;
}

// Where temporary files go, for as long as this lives.
class TemporaryFilesIn {
 public:
  explicit TemporaryFilesIn(const std::string& folder) { setenv("TMPDIR", folder.c_str(), 1); }
  ~TemporaryFilesIn() {
    if (before_) {
      setenv("TMPDIR", before_->c_str(), 1);
    } else {
      unsetenv("TMPDIR");
    }
  }
  TemporaryFilesIn(const TemporaryFilesIn&) = delete;
  TemporaryFilesIn& operator=(const TemporaryFilesIn&) = delete;

 private:
  std::optional<std::string> before_ =
      getenv("TMPDIR") == nullptr ? std::nullopt : std::optional<std::string>(getenv("TMPDIR"));
};

class TheProcess : public testing::Test {
 protected:
  static double Seconds(const std::function<void()>& body) {
    const auto start = std::chrono::steady_clock::now();
    body();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  }
  // A program in place of LibreOffice.
  SpreadsheetSurroundings With(const std::string& script) const {
    folder.Write("office", "#!/bin/sh\n" + script + "\n");
    std::filesystem::permissions(folder.Path("office"), std::filesystem::perms::owner_all);
    auto surroundings = Surroundings();
    surroundings.program = folder.Path("office");
    return surroundings;
  }

  TemporaryFolder folder;
};

TEST_F(TheProcess, EndsOnQuitWithAllItLeftBehind) {
  const auto app = StartSpreadsheet(Surroundings());
  const int process = BridgeOf(app).Process();
  const auto profile = BridgeOf(app).Folder();
  app->Workbooks()->Add()->Worksheets()->Item(1)->Range("A1")->SetValue("unsaved");
  ASSERT_TRUE(IsThere(process));

  app->Quit();

  EXPECT_FALSE(IsThere(process));
  EXPECT_EQ(NumberOf([&] { app->Visible(); }), 462);
  EXPECT_EQ(NumberOf([&] { app->Quit(); }), 462);
}

TEST_F(TheProcess, EndsWithTheLastObjectOfTheApplication) {
  auto app = StartSpreadsheet(Surroundings());
  const int process = BridgeOf(app).Process();
  const auto profile = BridgeOf(app).Folder();
  auto cell = app->Workbooks()->Add()->Worksheets()->Item(1)->Range("A1");

  app = nullptr;
  EXPECT_TRUE(IsThere(process));
  cell = nullptr;

  EXPECT_FALSE(IsThere(process));
  EXPECT_FALSE(std::filesystem::exists(profile));
}

TEST_F(TheProcess, TakesAnOddFolderForTemporaryFiles) {
  const auto odd = folder.Path("Größe #1 %41");
  std::filesystem::create_directory(odd);
  const auto app = [&] {
    const TemporaryFilesIn chosen(odd);
    return StartSpreadsheet(Surroundings());
  }();

  const auto workbook = app->Workbooks()->Add();
  workbook->SaveAs(folder.Path("book.xls"));
  workbook->Close(false);

  EXPECT_TRUE(BridgeOf(app).Folder().starts_with(odd));
  EXPECT_TRUE(app->Workbooks()->Open(folder.Path("book.xls")));
}

TEST_F(TheProcess, GivesEachApplicationAnOfficeOfItsOwn) {
  const auto first = StartSpreadsheet(Surroundings());
  const auto second = StartSpreadsheet(Surroundings());
  EXPECT_NE(BridgeOf(first).Process(), BridgeOf(second).Process());

  first->Quit();

  EXPECT_EQ(NumberOf([&] { second->Workbooks()->Add(); }), 0);
}

TEST_F(TheProcess, IsMissedWhenItIsKilled) {
  const auto app = StartSpreadsheet(Surroundings());
  const auto workbook = app->Workbooks()->Add();
  kill(BridgeOf(app).Process(), SIGKILL);

  const auto state = DescriptionOf([&] { workbook->SaveAs(folder.Path("book.xls")); });

  EXPECT_EQ(NumberOf([&] { workbook->SaveAs(folder.Path("book.xls")); }), 462);
  EXPECT_THAT(state, HasSubstr("ended"));
  EXPECT_TRUE(folder.Names().empty());
}

TEST_F(TheProcess, LeavesNoPipeWhenItIsKilled) {
  auto app = StartSpreadsheet(Surroundings());
  const auto name = std::filesystem::path(BridgeOf(app).Folder()).filename().string();
  const int process = BridgeOf(app).Process();
  ASSERT_TRUE(HasPipe("_" + name));
  kill(process, SIGKILL);

  app = nullptr;

  EXPECT_FALSE(HasPipe("_" + name));
}

TEST_F(TheProcess, IsMissedByWhatNeedsNoAnswerToo) {
  const auto app = StartSpreadsheet(Surroundings());
  const auto cell = app->Workbooks()->Add()->Worksheets()->Item(1)->Range("A1");
  EXPECT_TRUE(cell->Value().IsEmpty());
  kill(BridgeOf(app).Process(), SIGKILL);

  for (int round = 0; round < 400 && BridgeOf(app).IsAlive(); ++round) std::this_thread::sleep_for(25ms);

  EXPECT_EQ(NumberOf([&] { cell->Value(); }), 462);
}

TEST_F(TheProcess, IsEndedWhenItDoesNotAnswer) {
  auto surroundings = Surroundings();
  surroundings.limits.answer = 1s;
  const auto app = StartSpreadsheet(surroundings);
  const int process = BridgeOf(app).Process();
  kill(process, SIGSTOP);

  const auto seconds = Seconds([&] { EXPECT_EQ(NumberOf([&] { app->Workbooks()->Add(); }), 462); });

  EXPECT_LT(seconds, 20);
  EXPECT_TRUE(EndsSoon(process));
  EXPECT_THAT(DescriptionOf([&] { app->Workbooks()->Add(); }), HasSubstr("didn't answer"));
}

TEST_F(TheProcess, IsEndedWhenItDoesNotQuit) {
  auto surroundings = Surroundings();
  surroundings.limits.end = 1s;
  auto app = StartSpreadsheet(surroundings);
  const int process = BridgeOf(app).Process();
  kill(process, SIGSTOP);

  const auto seconds = Seconds([&] { app->Quit(); });

  EXPECT_LT(seconds, 20);
  EXPECT_FALSE(IsThere(process));
}

TEST_F(TheProcess, GoesWithTheProgramThatStartedIt) {
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe(ends.data()), 0);
  const auto program = With("exec sleep 60").program;
  const auto child = fork();
  if (child == 0) {
    const office::OfficeProcess process(program, folder.Path(), "unused");
    const int id = process.Id();
    if (write(ends[1], &id, sizeof id) != sizeof id) _exit(1);
    pause();
    _exit(0);
  }
  int id = 0;
  ASSERT_EQ(read(ends[0], &id, sizeof id), static_cast<ssize_t>(sizeof id));

  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);

  EXPECT_TRUE(EndsSoon(id));
}

TEST_F(TheProcess, CannotBeMadeOfAProgramThatIsMissing) {
  auto surroundings = Surroundings();
  surroundings.program = folder.Path("nothing");

  EXPECT_EQ(NumberOf([&] { StartSpreadsheet(surroundings); }), 429);
  EXPECT_THAT(DescriptionOf([&] { StartSpreadsheet(surroundings); }), HasSubstr(surroundings.program));
}

TEST_F(TheProcess, CannotBeMadeOfAProgramThatEndsAtOnce) {
  const auto surroundings = With("exit 3");

  EXPECT_EQ(NumberOf([&] { StartSpreadsheet(surroundings); }), 429);
  EXPECT_THAT(DescriptionOf([&] { StartSpreadsheet(surroundings); }), HasSubstr("code 3"));
}

TEST_F(TheProcess, IsStartedAgainOnlySoOftenWhenItAsksForThat) {
  const auto surroundings = With("echo again >>" + folder.Path("log") + "; exit 81");

  EXPECT_EQ(NumberOf([&] { StartSpreadsheet(surroundings); }), 429);

  EXPECT_EQ(folder.Read("log"), "again\nagain\nagain\n");
}

TEST_F(TheProcess, CannotBeMadeOfAProgramThatNeverAnswers) {
  auto surroundings = With("echo $$ >" + folder.Path("id") + "; exec sleep 60");
  surroundings.limits.start = 1s;

  const auto seconds = Seconds([&] { EXPECT_EQ(NumberOf([&] { StartSpreadsheet(surroundings); }), 429); });

  EXPECT_LT(seconds, 20);
  EXPECT_FALSE(IsThere(std::stoi(folder.Read("id"))));
}

}  // namespace
}  // namespace quintara::test
