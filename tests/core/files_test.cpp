#include "core/files.h"

#include "tests/support/desktop_test.h"

namespace core {
namespace {

using support::ErrorOf;

class FilesTest : public support::DesktopTest {};

TEST_F(FilesTest, FailuresHaveTheirNumbers) {
  folder.PutFolder("folder");
  const std::string missing = folder.Path("missing.txt"), lost = folder.Path("no/where.txt"),
                    aFolder = folder.Path("folder");
  EXPECT_EQ(ErrorOf([&] { ReadFile(missing); }), 53);
  EXPECT_EQ(ErrorOf([&] { ReadFile(lost); }), 76);
  EXPECT_EQ(ErrorOf([&] { ReadFile(aFolder); }), 75);
  EXPECT_EQ(ErrorOf([&] { AppendToFile(lost, "x"); }), 76);
  EXPECT_EQ(ErrorOf([&] { AppendToFile(aFolder, "x"); }), 75);
  EXPECT_EQ(ErrorOf([&] { WriteFileSafely(lost, "x"); }), 76);
  EXPECT_EQ(ErrorOf([&] { WriteFileSafely(aFolder, "x"); }), 75);
  EXPECT_EQ(ErrorOf([] { AppendToFile("/dev/full", "x"); }), 61);
  EXPECT_FALSE(FileExists(aFolder));
}

TEST_F(FilesTest, ReplacingLeavesNothingElseBehind) {
  folder.Put("User.ini", "a longer text than the new one");
  WriteFileSafely(InProgramDirectory("User.ini"), "new");
  AppendToFile(InProgramDirectory("Log.txt"), "a");
  AppendToFile(InProgramDirectory("Log.txt"), std::string("\0b", 2));
  EXPECT_EQ(folder.Get("User.ini"), "new");
  EXPECT_EQ(ReadFile(folder.Path("Log.txt")), std::string("a\0b", 3));
  EXPECT_EQ(folder.Names(), "Log.txt User.ini");
}

TEST_F(FilesTest, AHugeFileIsReadInPart) {
  folder.Put("huge", std::string(kMaxFileSize + 1, 'x'));
  EXPECT_EQ(ReadFile(folder.Path("huge")).size(), kMaxFileSize);
}

}  // namespace
}  // namespace core
