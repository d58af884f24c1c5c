#include <gtest/gtest.h>
#include <sys/stat.h>

#include <system_error>

#include "core/ansi.h"
#include "core/record_file.h"
#include "core/scratch_file.h"
#include "support/scratch_folder.h"

namespace {

std::string BytesOf(const Record& record) {
  return {reinterpret_cast<const char*>(record.Bytes()), kRecordSize};
}

TEST(Ansi, EveryByteGoesThereAndBackAndWhatHasNoPlaceIsAQuestionMark) {
  for (int byte = 0; byte < 256; ++byte) {
    const std::string ansi(1, static_cast<char>(byte));
    EXPECT_EQ(ToAnsi(FromAnsi(ansi)), ansi) << byte;
  }
  EXPECT_EQ(FromAnsi("a\x80\x99\xE9\x81"), "a\u20AC\u2122\u00E9\u0081");
  EXPECT_EQ(ToAnsi("x\u65E5y\U0001F3B2\u0080z"), "x?y??z");
  EXPECT_EQ(ToAnsi("\xC3"), "?");            // cut short
  EXPECT_EQ(ToAnsi("\xFF\x80q"), "??q");     // no UTF-8
  EXPECT_EQ(ToAnsi("\xC0\xAF"), "??");       // a form too long for its character
  EXPECT_EQ(ToAnsi("\xE2\x28\xA1"), "?(?");  // broken off
}

TEST(RecordFile, NumbersAreLittleEndianAndTextsBlankPadded) {
  Record record;
  record.PutInteger(0, -2);
  record.PutLong(2, 0x01020304);
  record.PutSingle(6, 1500.0F);
  record.PutMoney(10, Currency::FromRaw(-3));
  record.PutText(18, 4, "caf\u00E9s");
  record.PutText(22, 4, "a");
  const std::string expected(
      "\xFE\xFF\x04\x03\x02\x01\x00\x80\xBB\x44\xFD\xFF\xFF\xFF\xFF\xFF\xFF\xFF"
      "\x63\x61\x66\xE9\x61\x20\x20\x20",
      26);
  EXPECT_EQ(BytesOf(record).substr(0, 26), expected);
  EXPECT_EQ(record.Integer(0), -2);
  EXPECT_EQ(record.Long(2), 0x01020304);
  EXPECT_EQ(record.Single(6), 1500.0F);
  EXPECT_EQ(record.Money(10).Raw(), -3);
  EXPECT_EQ(record.Text(18, 4), "caf\u00E9");
  EXPECT_EQ(std::tuple(record.Text(22, 4), record.Text(40, 9)), std::tuple("a", ""));
}

TEST(RecordFile, ReadsWhatIsThere) {
  const ScratchFolder folder("records");
  const RecordFile missing = ReadRecords(folder / "none", 9);
  EXPECT_EQ(std::tuple(missing.Length, folder.Count()), std::tuple(0U, 0U));

  const std::string path = folder.Write("cut", std::string(300, 'x'));
  const RecordFile cut = ReadRecords(path, 9);
  EXPECT_EQ(cut.Length, 300U);
  ASSERT_EQ(cut.Records.size(), 2U);
  EXPECT_EQ(cut.At(2).Text(0, 256), std::string(44, 'x'));
  EXPECT_EQ(std::pair(cut.At(3), cut.At(0)), std::pair(Record(), Record()));
  EXPECT_EQ(ReadRecords(path, 1).Length, 300U);
  EXPECT_EQ(ReadRecords(path, 1).Records.size(), 1U);
  EXPECT_THROW(ReadRecords(folder / "", 1), std::system_error);
  EXPECT_THROW(ReadRecords(folder / std::string(300, 'n'), 1), std::system_error);
}

TEST(RecordFile, OnlyAFileIsReplacedAndALinkGoesOnPointing) {
  const ScratchFolder folder("records");
  const std::string path = folder.Write("kept", "old");
  fs::create_directory(folder / "sub");
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  fs::create_symlink("/dev/null", folder / "device");
  const std::vector<Record> records(40);
  fs::permissions(path, fs::perms::owner_read);
  for (const char* target : {"kept", "sub", "gone/file", "sub/", "kept/file", "pipe", "device"})
    EXPECT_THROW(WriteRecords(folder / target, records), std::system_error) << target;
  for (const char* source : {"sub", "pipe", "device"})
    EXPECT_THROW(ReadRecords(folder / source, 1), std::system_error) << source;
  fs::permissions(path, fs::perms::owner_all);
  EXPECT_EQ(folder.Read("kept"), "old");
  EXPECT_EQ(folder.Count(), 4U) << "no scratch file stays";

  fs::create_symlink("kept", folder / "link");
  WriteRecords(folder / "link", records, Durability::Disk, Former::Kept);
  EXPECT_EQ(folder.Read("kept").size(), 40 * kRecordSize);
  EXPECT_EQ(folder.Read("kept.bak"), "old");
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_all);
}

TEST(ScratchFile, WhatKilledProgramsLeftIsSweptAndNothingElse) {
  const ScratchFolder folder("scratch");
  const std::vector<std::string> others = {"kelvanor-12.tmp", "kelvanor1000.tmp", "kelvanor.tmp",
                                           "mykelvanor1.tmp", "kelvanor-0123456789abcdeg.tmp"};
  for (const std::string& name : others) folder.Write(name, "kept");
  for (int number = 0; number < 1'000; ++number)
    folder.Write("kelvanor" + std::to_string(number) + ".tmp", "left");
  fs::create_symlink(others[0], folder / "kelvanor-0123456789abcdef.tmp");
  folder.Write("kelvanor-fedcba9876543210.tmp", "left");
  ScratchFile mine(folder / "", RawFile::kThisUser);
  WriteRecords(folder / "saved", {});
  EXPECT_FALSE(fs::exists(folder / "kelvanor-fedcba9876543210.tmp")) << "a save sweeps, too";
  SweepScratchFiles(folder / "", true);
  EXPECT_EQ(folder.Count(), others.size() + 3) << "with a link, mine, and what was saved";
  mine.TakePlaceOf(folder / "taken");
  SweepScratchFiles(folder / "", true);
  EXPECT_TRUE(fs::exists(folder / "taken"));
}

}  // namespace
