#include "sys/local_files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "text/macro_text.h"

namespace kx {
namespace {

namespace fs = std::filesystem;

Bytes B(std::string_view s) {
  return Bytes(s.begin(), s.end());
}

// A fresh folder per test, removed afterwards.
class LocalFilesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    folder_ = fs::temp_directory_path() / (std::string("kx_local_files_") + info->name());
    fs::remove_all(folder_);
    fs::create_directories(folder_);
  }
  void TearDown() override {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
  }
  std::string Path(std::string_view name) const {
    return (folder_ / fs::path(std::u8string(name.begin(), name.end()))).string();
  }
  // Paths the port takes are UTF-8, whatever the narrow encoding of the system.
  std::string Utf8Path(std::string_view name) const {
    const std::u8string folder = folder_.u8string();
    return std::string(folder.begin(), folder.end()) + std::string(1, LocalFiles().Separator()) +
           std::string(name);
  }
  Bytes OnDisk(std::string_view utf8Name) const {
    std::ifstream in(folder_ / fs::path(std::u8string(utf8Name.begin(), utf8Name.end())),
                     std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  }
  bool TemporaryLeft(std::string_view utf8Name) const {
    const std::string temporary = LocalFiles::TemporaryPathFor(utf8Name);
    return fs::exists(folder_ / fs::path(std::u8string(temporary.begin(), temporary.end())));
  }

  fs::path folder_;
};

TEST_F(LocalFilesTest, WritesAndReadsBackTheSameBytes) {
  LocalFiles files;
  const std::string path = Utf8Path("a.ksx");
  const Bytes bytes =
      B(std::string("\xEF\xBB\xBF"
                    "a\0b\r\n",
                    8));
  ASSERT_TRUE(files.WriteAtomic(path, bytes));
  EXPECT_TRUE(files.IsFile(path));
  EXPECT_EQ(files.ReadAll(path), bytes);
  EXPECT_FALSE(TemporaryLeft("a.ksx"));
}

TEST_F(LocalFilesTest, ReplacesAnExistingFile) {
  LocalFiles files;
  const std::string path = Utf8Path("a.ksx");
  ASSERT_TRUE(files.WriteAtomic(path, B("old old old")));
  ASSERT_TRUE(files.WriteAtomic(path, B("new")));
  EXPECT_EQ(files.ReadAll(path), B("new"));
}

TEST_F(LocalFilesTest, HandlesJapaneseFileNames) {
  LocalFiles files;
  const std::string path = Utf8Path("マクロ.ksx");
  ASSERT_TRUE(files.WriteAtomic(path, B("x")));
  EXPECT_EQ(OnDisk("マクロ.ksx"), B("x"));
  EXPECT_EQ(files.ReadAll(path), B("x"));
}

TEST_F(LocalFilesTest, AnswersNothingForAMissingFileOrAFolder) {
  LocalFiles files;
  EXPECT_FALSE(files.IsFile(Utf8Path("missing")));
  EXPECT_EQ(files.ReadAll(Utf8Path("missing")), std::nullopt);
  fs::create_directory(folder_ / "sub");
  EXPECT_FALSE(files.IsFile(Utf8Path("sub")));
  EXPECT_EQ(files.ReadAll(Utf8Path("sub")), std::nullopt);
}

TEST_F(LocalFilesTest, FailsToWriteIntoAMissingFolder) {
  LocalFiles files;
  EXPECT_FALSE(files.WriteAtomic(Utf8Path("missing") + LocalFiles().Separator() + "a.ksx", B("x")));
}

TEST_F(LocalFilesTest, ReadsAnEmptyFileAsNoBytes) {
  LocalFiles files;
  ASSERT_TRUE(files.WriteAtomic(Utf8Path("e"), {}));
  EXPECT_EQ(files.ReadAll(Utf8Path("e")), Bytes{});
}

// Writes the temporary file halfway and then fails, as if the program died.
class DyingHalfway : public LocalFiles {
 protected:
  bool WriteTemporary(const std::string& temporary, const Bytes& bytes) override {
    LocalFiles::WriteTemporary(temporary, Bytes(bytes.begin(), bytes.begin() + bytes.size() / 2));
    return false;
  }
};

// Writes the temporary file but cannot put it in place of the target.
class FailingReplace : public LocalFiles {
 protected:
  bool ReplaceTarget(const std::string&, const std::string&) override { return false; }
};

TEST_F(LocalFilesTest, KeepsTheOldFileWhenASaveDiesHalfway) {
  ASSERT_TRUE(LocalFiles().WriteAtomic(Utf8Path("a.ksx"), B("old contents")));
  DyingHalfway files;
  EXPECT_FALSE(sWriteText(files, Utf8Path("a.ksx"), "new contents, rather longer"));
  EXPECT_EQ(OnDisk("a.ksx"), B("old contents"));
  EXPECT_FALSE(TemporaryLeft("a.ksx"));
}

TEST_F(LocalFilesTest, KeepsTheOldFileWhenTheReplaceStepFails) {
  ASSERT_TRUE(LocalFiles().WriteAtomic(Utf8Path("a.ksx"), B("old contents")));
  FailingReplace files;
  EXPECT_FALSE(sWriteText(files, Utf8Path("a.ksx"), "new"));
  EXPECT_EQ(OnDisk("a.ksx"), B("old contents"));
  EXPECT_FALSE(TemporaryLeft("a.ksx"));
}

TEST_F(LocalFilesTest, KeepsTheOldFileWhenTheTargetIsAFolder) {
  fs::create_directory(folder_ / "dir.ksx");
  LocalFiles files;
  EXPECT_FALSE(files.WriteAtomic(Utf8Path("dir.ksx"), B("x")));
  EXPECT_TRUE(fs::is_directory(folder_ / "dir.ksx"));
}

TEST(LocalFiles, KnowsTheFolderOfTheProgram) {
  LocalFiles files;
  const std::string folder = files.AppFolder();
  ASSERT_FALSE(folder.empty());
  EXPECT_NE(folder.back(), files.Separator());
  EXPECT_TRUE(fs::is_directory(fs::path(std::u8string(folder.begin(), folder.end()))));
}

}  // namespace
}  // namespace kx
