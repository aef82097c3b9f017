#include "gui/autosave.h"

#include <gtest/gtest.h>

#include "text/macro_text.h"
#include "text/memory_files.h"

namespace kx {
namespace {

TEST(RecordingAutosave, GoesToRecKsxWhenMacrosAreAssociated) {
  testing::MemoryFiles files;
  EXPECT_EQ(RecordingAutosavePath(files, 8), "C:\\Kestrelix\\Macro\\Rec.ksx");
  EXPECT_EQ(RecordingAutosavePath(files, 9), "C:\\Kestrelix\\Macro\\Rec.txt");
  EXPECT_EQ(RecordingAutosavePath(files, 0), "C:\\Kestrelix\\Macro\\Rec.txt");
}

TEST(RecordingAutosave, OverwritesAnOldRecordingAsUtf8WithAMark) {
  testing::MemoryFiles files;
  files.files["C:\\Kestrelix\\Macro\\Rec.ksx"] = Bytes{'o', 'l', 'd'};
  ASSERT_TRUE(AutosaveRecording(files, 8, "LCtrl Down\r\n250\r\n"));
  const Bytes saved = files.files["C:\\Kestrelix\\Macro\\Rec.ksx"];
  EXPECT_EQ(std::string(saved.begin(), saved.end()), "\xEF\xBB\xBFLCtrl Down\r\n250\r\n");
  EXPECT_EQ(sReadText(files, "C:\\Kestrelix\\Macro\\Rec.ksx"), "LCtrl Down\r\n250\r\n");
}

TEST(RecordingAutosave, ReportsAFailedWrite) {
  testing::MemoryFiles files;
  files.failWrites = true;
  EXPECT_FALSE(AutosaveRecording(files, 9, "x"));
  EXPECT_TRUE(files.files.empty());
}

}  // namespace
}  // namespace kx
