#include "autobet/script_file.h"

#include <gmock/gmock.h>

#include <climits>
#include <cmath>

#include "autobet/hot_keys.h"
#include "autobet/language.h"
#include "autobet/script.h"
#include "core/record_file.h"
#include "support/scratch_folder.h"
#include "support/table_fixture.h"

namespace {

constexpr const char* kHeader50 = "Kelvanor AutoBets, Data Format 5.0";
constexpr const char* kCorrupted =
    "\nhas either been corrupted or is not a true Kelvanor Auto-Bet file.";
constexpr const char* kOpenTitle = "Unable to Open Auto-Bet File";
constexpr int kYes = 1;
constexpr int kNo = 2;

ScriptLine MakeLine(int kind, int code, const std::string& name, int ofSubject = 0) {
  ScriptLine line;
  line.LineText = " line of " + name;
  line.LineKind = kind;
  line.LineCode = code;
  line.LineName = name;
  line.OfSubject = ofSubject;
  return line;
}

const std::vector<ScriptLine> kSmallScript = {MakeLine(WhenLine, 0, ""),
                                              MakeLine(ConditionLine, 11, "Hot ", OneFlag),
                                              MakeLine(LabelLine, 0, "Loop")};

Record HeaderRecord(const std::string& text, double count) {
  Record header;
  header.PutText(0, 128, text);
  header.PutMoney(214, Currency::FromDouble(count));
  return header;
}

std::string Joined(const std::vector<Record>& records) {
  std::string bytes;
  for (const Record& record : records)
    bytes.append(reinterpret_cast<const char*>(record.Bytes()), kRecordSize);
  return bytes;
}

class ScriptFile : public TableTest {
 protected:
  void SetUp() override {
    TableTest::SetUp();
    ClearScript();
    Game.HotKeys.clear();
  }
  void TearDown() override {
    static_cast<ScriptState&>(Game) = ScriptState();
    Game.AppPath.clear();
    TableTest::TearDown();
  }

  static void Lay(const std::vector<ScriptLine>& lines) {
    ClearScript();
    for (const ScriptLine& line : lines) InsertLine(Game.ScrCount + 1, line);
    Game.ScriptChanged = false;
  }

  static std::vector<std::string> FlagNames() {
    std::vector<std::string> names;
    for (const Flag& flag : Game.Flags) names.push_back(flag.FlagName);
    return names;
  }

  /// Opens a file, which must be refused with `text` behind its name, and leave the script alone.
  void ExpectRefused(const std::string& path, const std::string& text, int result = 0) {
    const ScriptState before = Game;
    OpenScript(path);
    EXPECT_EQ(Game.LastFileResult, result);
    EXPECT_EQ(TakeOnlyMessage(), (ShownMessage{BareName(path) + text, kOpenTitle, 640, OkStop}));
    ExpectSameScript(before);
  }

  static void ExpectSameScript(const ScriptState& before) {
    EXPECT_EQ(Game.Script, before.Script);
    EXPECT_EQ(Game.ScrCount, before.ScrCount);
    EXPECT_EQ(Game.Flags, before.Flags);
    EXPECT_EQ(Game.ScriptLabels, before.ScriptLabels);
    EXPECT_EQ(Game.AutoBetFile, before.AutoBetFile);
    EXPECT_EQ(Game.ScriptChanged, before.ScriptChanged);
    EXPECT_EQ(Game.ScriptInsertLine, before.ScriptInsertLine);
  }

  ScratchFolder Folder{"scripts"};
};

ScriptLine ExtremeLine(bool high) {
  ScriptLine line;
  const auto narrow = [high] { return high ? INT16_MAX : INT16_MIN; };
  line.LineText = "          " + std::string(118, high ? 'x' : '"');
  line.LineKind = narrow();
  line.LineCode = high ? INT32_MAX : INT32_MIN;
  line.LineName = high ? "\u20AC" + std::string(79, 'n') : " a  b";
  line.LineAmount = Currency::FromRaw(high ? INT64_MAX : INT64_MIN);
  line.OfSubject = high ? 2'147'483'520 : INT32_MIN;
  line.OfStackNum = line.Spare1 = line.ToStackNum = line.Spare2 = narrow();
  line.ToSubject = line.OfSubject;
  return line;
}

TEST_F(ScriptFile, EveryFieldSurvives) {
  std::vector<ScriptLine> lines = {ExtremeLine(true), ExtremeLine(false), ScriptLine(),
                                   MakeLine(RemarkLine, 0, "'a remark")};
  Lay(lines);
  const std::string path = Folder / "Extreme W\u00FCrfel.bet";
  SaveScript(path);
  EXPECT_EQ(Game.LastFileResult, 5 * 256);
  EXPECT_EQ(Game.AutoBetFile, path);
  ClearScript();
  Game.ScriptInsertLine = 3;
  OpenScript(path);
  EXPECT_EQ(Game.LastFileResult, 5 * 256);
  EXPECT_EQ(Game.Script, lines);
  EXPECT_EQ(Game.AutoBetFile, path);
  EXPECT_EQ(Game.ScriptInsertLine, 1);
  EXPECT_TRUE(Game.ScriptChanged);
  EXPECT_TRUE(Game.ScriptStale);
  EXPECT_TRUE(TakeShown().empty());

  // What doesn't fit is cut, or put to the nearest that does.
  lines[0].LineText += "cut";
  lines[0].LineName += "cut";
  lines[0].OfSubject = INT32_MAX;
  lines[0].OfStackNum = 100'000;
  Lay(lines);
  SaveScript(path);
  OpenScript(path);
  EXPECT_EQ(Game.Script[0], ExtremeLine(true));
}

TEST_F(ScriptFile, FieldsStandAtTheirOffsets) {
  ScriptLine line = MakeLine(ActionLine, 77, "Flag");
  line.LineAmount = Currency::FromRaw(-10'000);
  line.OfSubject = 1;
  line.OfStackNum = 2;
  line.Spare1 = 3;
  line.ToSubject = 4;
  line.ToStackNum = 5;
  line.Spare2 = 6;
  Lay({line});
  SaveScript(Folder / "a.bet");
  Record wide;
  wide.PutText(0, 128, line.LineText);
  wide.PutInteger(128, ActionLine);
  wide.PutLong(130, 77);
  wide.PutText(134, 80, "Flag");
  wide.PutMoney(214, -1);
  wide.PutSingle(222, 1);
  wide.PutInteger(226, 2);
  wide.PutInteger(228, 3);
  wide.PutSingle(230, 4);
  wide.PutInteger(234, 5);
  wide.PutInteger(236, 6);
  wide.PutText(238, 18, "");
  Record header = HeaderRecord(kHeader50, 1);
  header.PutText(134, 80, "");
  header.PutText(238, 18, "");
  EXPECT_EQ(Folder.Read("a.bet"), Joined({header, wide}));

  // The older layout has a narrower amount.
  Record narrow = wide;
  narrow.PutText(214, 42, "reserved, and not blank");
  narrow.PutSingle(214, 1234.56F);
  narrow.PutSingle(218, 1);
  narrow.PutInteger(222, 2);
  narrow.PutInteger(224, 3);
  narrow.PutSingle(226, 4);
  narrow.PutInteger(230, 5);
  narrow.PutInteger(232, 6);
  Record oldHeader = HeaderRecord("Kelvanor AutoBets, Data Format 3.9", 0);
  oldHeader.PutSingle(214, 1.4F);
  OpenScript(Folder.Write("old.bet", Joined({oldHeader, narrow, narrow})));
  line.LineAmount = Currency::FromDouble(static_cast<double>(1234.56F));
  EXPECT_EQ(Game.Script, std::vector{line});
  EXPECT_EQ(FlagNames(), std::vector<std::string>{"Flag"});

  for (const float bad : {std::nanf(""), 1e20F, -1.0F, 1'000'001.0F}) {
    oldHeader.PutSingle(214, bad);
    ExpectRefused(Folder.Write("old.bet", Joined({oldHeader, narrow})), kCorrupted);
  }
  oldHeader.PutSingle(214, 1);
  narrow.PutSingle(214, 1e20F);
  ExpectRefused(Folder.Write("old.bet", Joined({oldHeader, narrow})), kCorrupted);
}

TEST_F(ScriptFile, EveryRefusalHasItsText) {
  Lay(kSmallScript);
  const std::string older =
      "\nhas either been corrupted or was written with an older format which is no longer in use.";
  const auto later = [](const std::string& number) {
    return "\nrequires Kelvanor version " + number + " or later to run.";
  };
  struct Case {
    std::string Header;
    double Count;
    std::string Text;
  };
  const std::vector<Case> cases = {
      {"Kelvanor AutoBets, Data Format 5.1", 0, later("5.1")},
      {"Kelvanor AutoBets, Data Format 11.0", 0, later("11")},
      {"Kelvanor AutoBets, Data Format 4.9", 0, older},
      {"Kelvanor AutoBets", 0, older},
      {"kelvanor AutoBets, Data Format 5.0", 0, kCorrupted},
      {" Kelvanor AutoBets, Data Format 5.0", 0, kCorrupted},
      {"", 0, kCorrupted},
      {kHeader50, -1, kCorrupted},
      {kHeader50, 1.5, kCorrupted},
      {kHeader50, 1'000'001, kCorrupted},
  };
  for (const Case& each : cases) {
    ExpectRefused(Folder.Write("a.bet", Joined({HeaderRecord(each.Header, each.Count)})),
                  each.Text);
  }
  ExpectRefused(Folder.Write("empty.bet", ""), kCorrupted);
  ExpectRefused(Folder / "none.bet", kCorrupted);
  ExpectRefused("", kCorrupted);
  EXPECT_FALSE(std::filesystem::exists(Folder / "none.bet"));
  std::filesystem::create_directory(Folder / "sub");
  ExpectRefused(Folder / "sub", "\ncan't be read.", -1);
  EXPECT_THAT(Game.LastErrorText, ::testing::EndsWith("occurred, at: Open Auto-Bet File\n"));
  for (const float bad : {std::nanf(""), 2147483648.0F, -3e9F}) {
    for (const std::size_t field : {222U, 230U}) {
      Record line;
      line.PutSingle(field, bad);
      ExpectRefused(Folder.Write("a.bet", Joined({HeaderRecord(kHeader50, 2), Record(), line})),
                    kCorrupted);
    }
  }
}

TEST_F(ScriptFile, ADamagedFileIsRefusedOrReadWhole) {
  Lay(kSmallScript);
  SaveScript(Folder / "good.bet");
  const std::string good = Folder.Read("good.bet");
  Lay({MakeLine(LabelLine, 0, "in force"), MakeLine(ActionLine, SetFlag, "f")});
  int refused = 0;
  for (std::size_t at = 0; at < good.size(); ++at) {
    for (const int bits : {0x01, 0xFF}) {
      std::string bytes = good;
      bytes[at] = static_cast<char>(bytes[at] ^ bits);
      const ScriptState before = Game;
      OpenScript(Folder.Write("bad.bet", bytes));
      if (Game.LastFileResult == 0) {
        ++refused;
        EXPECT_EQ(TakeOnlyMessage().Title, kOpenTitle);
        ExpectSameScript(before);
        continue;
      }
      const std::vector<ScriptLine> lines = Game.Script;
      SaveScript(Folder / "again.bet");
      OpenScript(Folder / "again.bet");
      ASSERT_EQ(Game.Script, lines) << "byte " << at;
      static_cast<ScriptState&>(Game) = before;
    }
  }
  EXPECT_GE(refused, 17 * 2) << "each letter of the mark";
  EXPECT_TRUE(TakeShown().empty());
}

TEST_F(ScriptFile, AFileCutShortYieldsEmptyLines) {
  Lay(kSmallScript);
  SaveScript(Folder / "good.bet");
  const std::string good = Folder.Read("good.bet");
  for (std::size_t length = 256; length <= good.size(); length += 128) {
    OpenScript(Folder.Write("cut.bet", good.substr(0, length)));
    EXPECT_EQ(Game.LastFileResult, static_cast<int>(length));
    ASSERT_EQ(Game.ScrCount, 3);
    for (std::size_t i = 0; i < 3; ++i) {
      if (length >= (i + 2) * 256) {
        EXPECT_EQ(Line(static_cast<int>(i) + 1).LineKind, kSmallScript[i].LineKind);
      } else if (length <= (i + 1) * 256) {
        EXPECT_EQ(Game.Script[i], ScriptLine());
      }
    }
  }
  OpenScript(Folder.Write("none.bet", Joined({HeaderRecord(kHeader50, 0)})));
  EXPECT_EQ(Game.ScrCount, 0);
  EXPECT_TRUE(Game.Script.empty() && Game.Flags.empty() && Game.ScriptLabels.empty());
}

TEST_F(ScriptFile, NamesAreRegisteredOnce) {
  Lay({MakeLine(LabelLine, 0, " Loop "), MakeLine(LabelLine, 0, "loop"),
       MakeLine(LabelLine, 0, "\u00C4nd \u0160"), MakeLine(LabelLine, 0, "\u00E4ND \u0161"),
       MakeLine(ConditionLine, 11, "Hot ", OneFlag), MakeLine(ActionLine, SetFlag, "HOT"),
       MakeLine(ActionLine, SetFlag, "Cold"), MakeLine(ConditionLine, 11, "no", AnyFlag),
       MakeLine(ActionLine, GoTo, "no")});
  const std::vector<std::string> labels = {" Loop", "\u00C4nd \u0160"};
  const std::vector<std::string> flags = {"Hot", "Cold"};
  EXPECT_EQ(Game.ScriptLabels, labels);
  EXPECT_EQ(FlagNames(), flags);
  Game.Flags[0].FlagValue = kTrue;
  SaveScript(Folder / "a.bet");
  OpenScript(Folder / "a.bet");
  EXPECT_EQ(Game.ScriptLabels, labels);
  EXPECT_EQ(FlagNames(), flags);
  EXPECT_EQ(Game.Flags[0].FlagValue, kFalse);
  EXPECT_EQ(FindFlag(" Hot "), 0);
  EXPECT_EQ(FindFlag("hot"), -1) << "a look-up minds case";

  // A subject that only rounds to that of flags names none.
  std::string bytes = Folder.Read("a.bet");
  bytes[5 * 256 + 222] = 1;
  OpenScript(Folder.Write("b.bet", bytes));
  EXPECT_EQ(Line(5).OfSubject, OneFlag);
  EXPECT_EQ(FlagNames(), (std::vector<std::string>{"HOT", "Cold"}));
}

TEST_F(ScriptFile, PasteAndCopySelected) {
  Lay(kSmallScript);
  SaveScript(Folder / "a.bet");
  Lay({MakeLine(LabelLine, 0, "x"), MakeLine(LabelLine, 0, "LOOP"), MakeLine(DoThisLine, 0, "")});
  Game.AutoBetFile = "mine.bet";
  for (ScriptLine& line : Game.Script) {
    line.LineSelected = true;
    line.LineMark = 4;
  }
  Game.ScriptCopyMode = true;
  Game.ScriptInsertLine = 2;
  OpenScript(Folder / "a.bet");
  ASSERT_EQ(Game.ScrCount, 6);
  const std::vector<std::string> names = {"x", "", "Hot", "Loop", "LOOP", ""};
  for (int number = 1; number <= 6; ++number) {
    EXPECT_EQ(Line(number).LineName, names[static_cast<unsigned>(number - 1)]);
    EXPECT_EQ(Line(number).LineSelected, number >= 2 && number <= 4);
    EXPECT_EQ(Line(number).LineMark, 0);
  }
  EXPECT_EQ(Game.ScriptLabels, (std::vector<std::string>{"x", "LOOP"}));
  EXPECT_EQ(FlagNames(), std::vector<std::string>{"Hot"});
  EXPECT_EQ(Game.AutoBetFile, "mine.bet");
  EXPECT_TRUE(Game.ScriptChanged);

  Line(3).LineSelected = false;
  Line(6).LineSelected = true;
  SaveScript(Folder / "selected.bet");
  EXPECT_EQ(Game.LastFileResult, 4 * 256);
  EXPECT_EQ(Game.AutoBetFile, "mine.bet");
  Game.ScriptCopyMode = false;
  OpenScript(Folder / "selected.bet");
  ASSERT_EQ(Game.ScrCount, 3);
  EXPECT_EQ(Line(1).LineKind, WhenLine);
  EXPECT_EQ(Line(2).LineName, "Loop");
  EXPECT_EQ(Line(3).LineKind, DoThisLine);
  EXPECT_FALSE(Line(1).LineSelected);
}

TEST_F(ScriptFile, AFailedSaveTellsAndLeavesTheOldFile) {
  Lay(kSmallScript);
  SaveScript(Folder / "a.bet");
  std::filesystem::create_directory(Folder / "dir.bet");
  for (const char* name : {"gone/a.bet", "dir.bet"}) {
    const std::string path = Folder / name;
    SaveScript(path);
    EXPECT_EQ(Game.LastFileResult, -1);
    EXPECT_THAT(Game.LastErrorText, ::testing::EndsWith("occurred, at: Save Auto-Bet File\n"));
    EXPECT_EQ(TakeOnlyMessage(), (ShownMessage{BareName(path) + "\ncan't be written.",
                                               "Unable to Save Auto-Bet File", 640, OkStop}));
    EXPECT_EQ(Game.AutoBetFile, Folder / "a.bet");
  }
  EXPECT_EQ(Folder.Count(), 2U);
}

// --- Conversion ---

constexpr const char* kConvertTitle = "Convert Brindlemox to Kelvanor Auto-Bet File";

class ForeignScript : public ScriptFile {
 protected:
  /// What an old code becomes, worked out bet by bet; -1 for a dropped line.
  static int NewCode(int old) {
    constexpr std::array<int, 5> kBases = {1, 19, 25, 31, 37};  // of families of six
    if (old == 0 || old == 9 || old > 88) return old;
    if (old >= 51) return old <= 53 ? old - 8 : old - 5;
    // Families have eight numbers each: 2, 3, 4, 5, 6, 8, 9, 10 ... with two strangers at the ends.
    const int family = old / 10;
    const int digit = old % 10;
    if (digit < 3 || digit > 8) return -1;
    return kBases.at(static_cast<unsigned>(family)) + digit - 3;
  }

  std::string Foreign(const std::vector<Record>& lines, double count) const {
    std::vector<Record> records = {HeaderRecord("Brindlemox AutoBets, Data Format 5.0", count)};
    records.insert(records.end(), lines.begin(), lines.end());
    return Folder.Write("old.bet", Joined(records));
  }
};

TEST_F(ForeignScript, EveryCodeIsMovedOrDropped) {
  std::vector<Record> lines;
  std::vector<std::pair<int, int>> expected;
  for (int code = 0; code <= 100; ++code) {
    for (const bool target : {false, true}) {
      Record line;
      line.PutText(0, 128, "line " + std::to_string(code));
      line.PutInteger(128, ActionLine);
      line.PutSingle(target ? 230 : 222, static_cast<float>(code));
      line.PutSingle(target ? 222 : 230, 1400.0F);
      lines.push_back(line);
      if (NewCode(code) < 0) continue;
      expected.emplace_back(target ? 1400 : NewCode(code), target ? NewCode(code) : 1400);
    }
  }
  const std::string path = Foreign(lines, static_cast<double>(lines.size()));
  const std::string before = Folder.Read("old.bet");
  Answers = {{kYes, false, "", ""}};
  OpenScript(path);
  const std::string newPath = Folder / "old[kv].bet";
  EXPECT_EQ(TakeOnlyMessage(),
            (ShownMessage{
                "old.bet\nwas created using Brindlemox (another program by Harrowmere Games.)\n\n"
                "You can run this file by converting it to Kelvanor format. If you choose to do "
                "this, the original file will remain intact and a new file will be created using "
                "the same name plus [kv] added to the end. Any lines containing references to Lay, "
                "Come, Come Odds, Place, and Buy bets on points 2, 3, 11, or 12 will be removed.  "
                "This could cause errors in the script which you'll need to resolve before you can "
                "run it.\n\nWould you like to convert this file to Kelvanor format now?\n\n",
                kConvertTitle, 640, YesNo}));
  ASSERT_EQ(Game.ScrCount, static_cast<int>(expected.size()));
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(std::pair(Game.Script[i].OfSubject, Game.Script[i].ToSubject), expected[i])
        << Game.Script[i].LineText;
  }
  EXPECT_EQ(Game.AutoBetFile, newPath);
  EXPECT_EQ(Game.LastFileResult, static_cast<int>(FileLength(newPath)));
  EXPECT_EQ(Folder.Read("old.bet"), before);
}

TEST_F(ForeignScript, QuestionsAndRefusals) {
  const std::string path = Foreign({Record()}, 1);
  const ScriptState before = Game;
  Answers = {{kNo, false, "", ""}};
  OpenScript(path);
  EXPECT_EQ(Game.LastFileResult, 0);
  EXPECT_EQ(Folder.Count(), 1U);

  Folder.Write("old[kv].bet", "x");
  TakeShown();
  Answers = {{kYes, false, "", ""}, {kNo, false, "", ""}};
  OpenScript(path);
  EXPECT_EQ(Game.LastFileResult, 0);
  ASSERT_EQ(Shown.size(), 2U);
  EXPECT_EQ(Shown[1],
            (ShownMessage{"old[kv].bet\nis already on file.\n\nDo you want to overwrite it?",
                          kConvertTitle, 640, YesNo}));
  EXPECT_EQ(Folder.Read("old[kv].bet"), "x");
  ExpectSameScript(before);

  for (const double count : {-1.0, 0.5, 1e9}) {
    Foreign({Record()}, count);
    Answers = {{kYes, false, "", ""}, {kYes, false, "", ""}};
    OpenScript(path);
    EXPECT_EQ(Game.LastFileResult, 0);
    EXPECT_EQ(TakeShown().back().Text, std::string("old.bet") + kCorrupted);
    ExpectSameScript(before);
  }
  Foreign({Record()}, 1);
  Answers = {{kYes, false, "", ""}, {kYes, false, "", ""}};
  OpenScript(path);
  EXPECT_EQ(Game.ScrCount, 1);

  std::filesystem::remove(Folder / "old[kv].bet");
  std::filesystem::create_directory(Folder / "old[kv].bet");
  TakeShown();
  Answers = {{kYes, false, "", ""}, {kYes, false, "", ""}};
  OpenScript(path);
  EXPECT_EQ(Game.LastFileResult, -1);
  EXPECT_EQ(TakeShown().back(),
            (ShownMessage{"old.bet\ncan't be converted.", kConvertTitle, 640, OkStop}));
}

// --- Hot-Keys ---

class HotKeyFile : public ScriptFile {
 protected:
  void SetUp() override {
    ScriptFile::SetUp();
    Game.AppPath = Folder / "";
  }
};

TEST_F(HotKeyFile, RowsSurvive) {
  const std::vector<HotKey> rows = {{'P', std::string(100, 'f'), "Pr\u00E9ss"}, {'q', "b.bet", ""}};
  Game.HotKeys = rows;
  SaveHotKeys();
  EXPECT_EQ(Game.LastFileResult, 3 * 256);
  const std::string bytes = Folder.Read("HotKeys.dta");
  EXPECT_EQ(bytes.substr(0, 24), "  Kelvanor Hot-Key File ");
  EXPECT_EQ(bytes.substr(101, 3), " 2 ");
  EXPECT_EQ(bytes.substr(256, 4), "P ff");
  EXPECT_EQ(bytes.substr(512 + 102, 154), std::string(154, ' '));
  Game.HotKeys.clear();
  LoadHotKeys();
  EXPECT_EQ(Game.HotKeys, rows);

  Game.AppPath = Folder / "gone/";
  SaveHotKeys();
  EXPECT_EQ(Game.LastFileResult, -1);
  LoadHotKeys();
  EXPECT_TRUE(Game.HotKeys.empty());
}

TEST_F(HotKeyFile, ADamagedFileGivesTheRowsThatExist) {
  Game.HotKeys = {{'a', "a.bet", ""}, {'b', "b.bet", ""}};
  SaveHotKeys();
  const std::string good = Folder.Read("HotKeys.dta");
  const auto rowsOf = [this](const std::string& bytes) {
    Folder.Write("HotKeys.dta", bytes);
    LoadHotKeys();
    return Game.HotKeys.size();
  };
  const auto withCount = [&good](const std::string& count) {
    return std::string(good).replace(102, count.size(), count);
  };
  for (const char* many : {"3", "999999999", "99999999999999999999999", "-1", "x", " "})
    EXPECT_EQ(rowsOf(withCount(many)), 2U) << many;
  EXPECT_EQ(rowsOf(withCount("1")), 1U);
  EXPECT_EQ(rowsOf(withCount("0")), 0U);
  EXPECT_EQ(rowsOf(good.substr(0, 600)), 1U);
  EXPECT_EQ(rowsOf(good.substr(0, 100)), 0U);
  EXPECT_EQ(rowsOf(""), 0U);
  EXPECT_EQ(rowsOf(std::string(good).replace(3, 1, "x")), 0U);
  EXPECT_EQ(rowsOf(std::string(good).replace(256, 1, "\x03")), 1U);
}

TEST_F(HotKeyFile, AKeyRunsItsFileAndTheScriptComesBack) {
  ScriptLine set = MakeLine(ActionLine, SetFlag, "Pressed");
  set.LineAmount = kTrue;
  Lay({MakeLine(DoThisLine, 0, ""), set});
  SaveScript(Folder / "hot.bet");
  Lay(kSmallScript);
  SaveScript(Folder / "mine.bet");
  Line(1).LineKind = WhileLine;  // not saved
  Game.ScriptChanged = false;
  Game.HotKeys = {{'H', "hot.bet", ""}, {'h', "none.bet", ""}, {'n', "none.bet", ""}};
  EXPECT_FALSE(RunHotKey('x'));
  EXPECT_TRUE(RunHotKey('h'));
  EXPECT_EQ(FlagNames(), (std::vector<std::string>{"Hot", "Pressed"}));
  EXPECT_EQ(Game.Flags.back().FlagValue, kTrue);
  EXPECT_EQ(Game.ScrCount, 3);
  EXPECT_EQ(Line(1).LineKind, WhenLine);
  EXPECT_EQ(Game.AutoBetFile, Folder / "mine.bet");
  EXPECT_FALSE(Game.ScriptChanged || Game.HotKeyRunning);
  EXPECT_TRUE(TakeShown().empty());

  const ScriptState before = Game;
  EXPECT_TRUE(RunHotKey('N'));
  EXPECT_EQ(TakeOnlyMessage().Text, std::string("none.bet") + kCorrupted);
  ExpectSameScript(before);
  EXPECT_FALSE(Game.HotKeyRunning);

  for (bool* busy : {&Game.AutoBetRunning, &Game.RollInProgress, &Game.HyperDriveOn}) {
    *busy = true;
    EXPECT_FALSE(RunHotKey('h'));
    *busy = false;
  }

  // An untitled script can't come back; the lines beyond the shorter one stay in the table.
  Game.AutoBetFile.clear();
  EXPECT_TRUE(RunHotKey('h'));
  EXPECT_EQ(TakeOnlyMessage().Text, kCorrupted);
  EXPECT_EQ(Game.ScrCount, 2);
  EXPECT_EQ(Game.Script.size(), 3U);
}

}  // namespace
