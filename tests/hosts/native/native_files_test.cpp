#include "hosts/native/native_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "base/text.h"
#include "support/test_platform.h"

#ifndef _WIN32
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#endif

namespace quintara {
namespace {

namespace fs = std::filesystem;

class NativeFiles : public testing::Test {
 protected:
  Failure FailureOf(const std::function<void()>& body) {
    try {
      body();
    } catch (const Failure& failure) {
      return failure;
    }
    ADD_FAILURE() << "no failure";
    return Failure(0, "none");
  }
  /// The number of the failure of `body`, whose description has to name `name`.
  int NumberOf(const std::string& name, const std::function<void()>& body) {
    const auto failure = FailureOf(body);
    EXPECT_THAT(failure.Description(), testing::HasSubstr(name));
    return failure.Number();
  }
  void MakeReadOnly(const std::string& name) { fs::permissions(ToPath(folder.Path(name)), fs::perms::owner_read); }

  test::TemporaryFolder folder;
  std::shared_ptr<Gate> gate = std::make_shared<Gate>();
  NativeContents files{gate};
  NativeFileSystem fileSystem{gate};
};

TEST_F(NativeFiles, GiveBackTheBytesThatWereWritten) {
  const std::string bytes("a\0\r\n\xFF\x1A", 6);

  files.Write(folder.Path("Gehäuse.bin"), bytes);

  EXPECT_EQ(files.Read(folder.Path("Gehäuse.bin")), bytes);
}

TEST_F(NativeFiles, ReadAndWriteMoreThanOneBlock) {
  std::string bytes(300000, 'x');
  bytes.back() = 'y';

  files.Write(folder.Path("big"), bytes);

  EXPECT_EQ(files.Read(folder.Path("big")), bytes);
}

TEST_F(NativeFiles, AShorterTextReplacesALongerOneWhole) {
  files.Write(folder.Path("a"), "a long text");

  files.Write(folder.Path("a"), "");

  EXPECT_EQ(folder.Read("a"), "");
}

TEST_F(NativeFiles, AMissingFileOrFolderCannotBeRead) {
  EXPECT_EQ(NumberOf("absent", [&] { files.Read(folder.Path("absent")); }), failure::kFileNotFound);
  EXPECT_EQ(NumberOf("absent", [&] { files.Read(folder.Path("absent/a")); }), failure::kPathNotFound);
  EXPECT_NE(NumberOf("", [&] { files.Read(""); }), 0);
}

TEST_F(NativeFiles, AFolderCannotBeReadOrWritten) {
  EXPECT_NE(NumberOf(folder.Path(), [&] { files.Read(folder.Path()); }), 0);
  EXPECT_NE(NumberOf(folder.Path(), [&] { files.Write(folder.Path(), "x"); }), 0);

  EXPECT_TRUE(fs::is_directory(ToPath(folder.Path())));
}

TEST_F(NativeFiles, NothingIsWrittenIntoAMissingFolder) {
  EXPECT_EQ(NumberOf("absent", [&] { files.Write(folder.Path("absent/a"), "x"); }), failure::kPathNotFound);
}

TEST_F(NativeFiles, ARenamedFileReplacesTheOtherOne) {
  folder.Write("new", "new");
  folder.Write("old", "old");

  files.Rename(folder.Path("new"), folder.Path("old"));

  EXPECT_EQ(folder.Names(), (std::vector<std::string>{"old"}));
  EXPECT_EQ(folder.Read("old"), "new");
}

TEST_F(NativeFiles, ARenamingThatFailsLeavesBothFiles) {
  folder.Write("a", "a");

  EXPECT_EQ(NumberOf("absent", [&] { files.Rename(folder.Path("absent"), folder.Path("a")); }), failure::kFileNotFound);
  EXPECT_EQ(NumberOf("nowhere", [&] { files.Rename(folder.Path("a"), folder.Path("nowhere/b")); }),
            failure::kPathNotFound);

  EXPECT_EQ(folder.Names(), (std::vector<std::string>{"a"}));
}

TEST_F(NativeFiles, AFileExistsAndAFolderIsNone) {
  folder.Write("a", "");

  EXPECT_TRUE(fileSystem.FileExists(folder.Path("a")));
  EXPECT_FALSE(fileSystem.FileExists(folder.Path("b")));
  EXPECT_FALSE(fileSystem.FileExists(folder.Path()));
  EXPECT_FALSE(fileSystem.FileExists(folder.Path("a/b")));
  EXPECT_FALSE(fileSystem.FileExists(""));
  EXPECT_TRUE(fileSystem.FolderExists(folder.Path()));
  EXPECT_FALSE(fileSystem.FolderExists(folder.Path("a")));
  EXPECT_FALSE(fileSystem.FolderExists(""));
}

TEST_F(NativeFiles, ADeletedFileIsGone) {
  folder.Write("a", "");

  fileSystem.DeleteFile(folder.Path("a"), false);

  EXPECT_TRUE(folder.Names().empty());
}

TEST_F(NativeFiles, OnlyForceDeletesAReadOnlyFile) {
  folder.Write("a", "");
  MakeReadOnly("a");

  EXPECT_EQ(NumberOf("a", [&] { fileSystem.DeleteFile(folder.Path("a"), false); }), failure::kPermissionDenied);
  EXPECT_TRUE(folder.Has("a"));
  fileSystem.DeleteFile(folder.Path("a"), true);

  EXPECT_FALSE(folder.Has("a"));
}

TEST_F(NativeFiles, AMissingFileOrAFolderCannotBeDeleted) {
  EXPECT_EQ(NumberOf("absent", [&] { fileSystem.DeleteFile(folder.Path("absent"), true); }), failure::kFileNotFound);
  EXPECT_EQ(NumberOf(folder.Path(), [&] { fileSystem.DeleteFile(folder.Path(), true); }), failure::kFileNotFound);

  EXPECT_TRUE(fileSystem.FolderExists(folder.Path()));
}

TEST_F(NativeFiles, AnExtensionStandsBehindTheLastPointOfTheName) {
  EXPECT_EQ(fileSystem.GetExtensionName("/w/a.stp.lwt"), "lwt");
  EXPECT_EQ(fileSystem.GetExtensionName("/w.d/a"), "");
  EXPECT_EQ(fileSystem.GetExtensionName("a."), "");
  EXPECT_EQ(fileSystem.GetExtensionName(".profile"), "profile");
  EXPECT_EQ(fileSystem.GetExtensionName(""), "");
  EXPECT_EQ(fileSystem.GetExtensionName("a.übung"), "übung");
}

TEST_F(NativeFiles, AFolderIsCreatedOnceAndBelowAnother) {
  fileSystem.CreateFolder(folder.Path("new"));

  EXPECT_TRUE(fileSystem.FolderExists(folder.Path("new")));
  EXPECT_EQ(NumberOf("new", [&] { fileSystem.CreateFolder(folder.Path("new")); }), failure::kPathAccess);
  EXPECT_EQ(NumberOf("deep", [&] { fileSystem.CreateFolder(folder.Path("deep/er")); }), failure::kPathNotFound);
}

TEST_F(NativeFiles, ACreatedFolderDoesNotReplaceAFile) {
  folder.Write("a", "text");

  EXPECT_NE(NumberOf("a", [&] { fileSystem.CreateFolder(folder.Path("a")); }), 0);

  EXPECT_EQ(folder.Read("a"), "text");
}

TEST_F(NativeFiles, EachOperationPassesTheGateBeforeItsEffect) {
  folder.Write("a", "text");
  for (const auto* const operation :
       {"Files.Write", "Files.Sync", "Files.Rename", "FileSystem.DeleteFile", "FileSystem.CreateFolder", "Files.Read",
        "FileSystem.FileExists", "FileSystem.FolderExists", "FileSystem.GetExtensionName"}) {
    gate->FailOperation(operation);
  }

  FailureOf([&] { files.Write(folder.Path("b"), ""); });
  FailureOf([&] { files.WriteUnsynced(folder.Path("b"), ""); });
  EXPECT_NE(FailureOf([&] { files.SyncAll({folder.Path("a")}); }).Number(), 0);
  FailureOf([&] { files.Rename(folder.Path("a"), folder.Path("b")); });
  FailureOf([&] { files.Read(folder.Path("a")); });
  FailureOf([&] { fileSystem.DeleteFile(folder.Path("a"), true); });
  FailureOf([&] { fileSystem.CreateFolder(folder.Path("c")); });
  FailureOf([&] { fileSystem.FileExists(folder.Path("a")); });
  FailureOf([&] { fileSystem.FolderExists(folder.Path("a")); });
  FailureOf([&] { fileSystem.GetExtensionName("a"); });

  EXPECT_EQ(folder.Names(), (std::vector<std::string>{"a"}));
}

TEST_F(NativeFiles, FilesWrittenWithoutSyncingAreBroughtToTheDiskTogether) {
  files.WriteUnsynced(folder.Path("a"), "one");
  files.WriteUnsynced(folder.Path("b"), "two");

  files.SyncAll({folder.Path("a"), folder.Path("b")});

  EXPECT_EQ(folder.Read("a"), "one");
  EXPECT_EQ(folder.Read("b"), "two");
}

TEST_F(NativeFiles, AMissingFileIsNotBroughtToTheDiskAndNotMade) {
  files.WriteUnsynced(folder.Path("a"), "text");

  EXPECT_EQ(NumberOf("gone", [&] { files.SyncAll({folder.Path("a"), folder.Path("gone")}); }), failure::kFileNotFound);

  EXPECT_EQ(folder.Names(), (std::vector<std::string>{"a"}));
}

#ifndef _WIN32
TEST_F(NativeFiles, AFullDiskIsToldAndADeviceIsNotRemoved) {
  fs::create_symlink("/dev/full", ToPath(folder.Path("full")));

  EXPECT_EQ(NumberOf("full", [&] { files.Write(folder.Path("full"), "x"); }), failure::kDiskFull);

  EXPECT_TRUE(fs::exists("/dev/full"));
}

TEST_F(NativeFiles, WhatIsNoFileOfADiskIsNotReadAndNotReplaced) {
  ASSERT_EQ(::mkfifo(folder.Path("pipe").c_str(), 0600), 0);

  EXPECT_EQ(NumberOf("pipe", [&] { files.Read(folder.Path("pipe")); }), failure::kPathAccess);
  EXPECT_EQ(NumberOf("/dev/zero", [&] { files.Read("/dev/zero"); }), failure::kPathAccess);
  EXPECT_EQ(NumberOf("pipe", [&] { files.WriteWhole(folder.Path("pipe"), "x"); }), failure::kPathAccess);

  EXPECT_TRUE(fs::is_fifo(ToPath(folder.Path("pipe"))));
}

/// No file can grow past a thousand bytes while it lives.
class SmallFiles {
 public:
  SmallFiles() {
    getrlimit(RLIMIT_FSIZE, &usual_);
    const rlimit small{1000, usual_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
  }
  ~SmallFiles() {
    setrlimit(RLIMIT_FSIZE, &usual_);
    std::signal(SIGXFSZ, before_);
  }
  SmallFiles(const SmallFiles&) = delete;
  SmallFiles& operator=(const SmallFiles&) = delete;

 private:
  void (*before_)(int) = std::signal(SIGXFSZ, SIG_IGN);
  rlimit usual_{};
};

TEST_F(NativeFiles, AFileThatCouldNotBeWrittenWholeIsRemovedAndTheOneBeforeWithIt) {
  folder.Write("old", "old");
  const std::string bytes(5000, 'x');
  int numbers[3] = {};

  {
    const SmallFiles limit;
    numbers[0] = FailureOf([&] { files.Write(folder.Path("a"), bytes); }).Number();
    numbers[1] = FailureOf([&] { files.Write(folder.Path("old"), bytes); }).Number();
    numbers[2] = FailureOf([&] { files.WriteUnsynced(folder.Path("b"), bytes); }).Number();
  }

  EXPECT_THAT(numbers, testing::Each(failure::kDiskFull));
  EXPECT_TRUE(folder.Names().empty());
}

TEST_F(NativeFiles, AFileThatCouldNotBeReplacedAsAWholeStays) {
  folder.Write("old", "old");
  int number = 0;

  {
    const SmallFiles limit;
    number = FailureOf([&] { files.WriteWhole(folder.Path("old"), std::string(5000, 'x')); }).Number();
  }

  EXPECT_EQ(number, failure::kDiskFull);
  EXPECT_EQ(folder.Names(), (std::vector<std::string>{"old"}));
  EXPECT_EQ(folder.Read("old"), "old");
}

TEST_F(NativeFiles, AFileReplacedAsAWholeKeepsItsPermissions) {
  constexpr auto kPrivate = fs::perms::owner_read | fs::perms::owner_write;
  folder.Write("a", "old");
  fs::permissions(ToPath(folder.Path("a")), kPrivate);

  files.WriteWhole(folder.Path("a"), "new");

  EXPECT_EQ(folder.Read("a"), "new");
  EXPECT_EQ(fs::status(ToPath(folder.Path("a"))).permissions(), kPrivate);
}

TEST_F(NativeFiles, AReadOnlyFileIsNotReplacedAsAWhole) {
  folder.Write("a", "old");
  MakeReadOnly("a");

  EXPECT_EQ(NumberOf("a", [&] { files.WriteWhole(folder.Path("a"), "new"); }), failure::kPermissionDenied);

  EXPECT_EQ(folder.Read("a"), "old");
}
#endif

}  // namespace
}  // namespace quintara
