#include <cmath>

#include "autobet/hot_key_table.h"
#include "autobet/hot_keys.h"
#include "autobet/script_reader.h"
#include "autobet/script_records.h"
#include "core/file_failure.h"
#include "support/table_fixture.h"

namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;

constexpr const char* kCorrupted =
    "\nhas either been corrupted or is not a true Kelvanor Auto-Bet file.";
constexpr const char* kOpenTitle = "Unable to Open Auto-Bet File";
constexpr const char* kSmallScript = "When . . .\nFlag \"Hot\" is True\nLabel \"Loop\"";

Record Header(const std::string& text, double count) {
  Record header;
  header.PutText(0, 128, text);
  header.PutMoney(214, Currency::FromDouble(count));
  return header;
}

Record Header50(double count) { return Header("Kelvanor AutoBets, Data Format 5.0", count); }

std::string Joined(const std::vector<Record>& records) {
  return {reinterpret_cast<const char*>(records.data()), records.size() * kRecordSize};
}

std::vector<std::string> LineTexts() {
  std::vector<std::string> texts;
  for (const ScriptLine& line : Game.Script) texts.push_back(Trimmed(line.LineText));
  return texts;
}

std::vector<std::string> FlagNames() {
  std::vector<std::string> names;
  for (const Flag& flag : Game.Flags) names.push_back(flag.FlagName);
  return names;
}

class ScriptFile : public FolderTest {
 protected:
  ScriptFile() { ClearScript(); }

  std::string Write(const char* name, const std::vector<Record>& records) const {
    return folder_.Write(name, Joined(records));
  }

  /// Makes a script the one in force, with its file.
  void Save(const char* name, const std::string& script) {
    LoadScript(script);
    SaveScript(folder_ / name);
  }

  /// What a refusal leaves alone.
  static auto Standing(const ScriptState& state = Game) {
    return std::tuple(state.Script, state.ScrCount, state.Flags, state.ScriptLabels,
                      state.AutoBetFile, state.ScriptChanged, state.ScriptInsertLine);
  }

  /// Opens a file, which must be refused with `text` behind its name, and leave the script alone.
  void ExpectRefused(const std::string& path, const std::string& text, int result = 0) {
    const auto before = Standing();
    OpenScript(path);
    EXPECT_EQ(Game.LastFileResult, result);
    EXPECT_EQ(TakeOnlyMessage(), Stop(kOpenTitle, 640, BareName(path) + text));
    EXPECT_EQ(Standing(), before);
  }
};

ScriptLine ExtremeLine(bool high) {
  ScriptLine line;
  line.LineText = "          " + std::string(118, high ? 'x' : '"');
  line.LineKind = high ? INT16_MAX : INT16_MIN;
  line.LineCode = high ? INT32_MAX : INT32_MIN;
  line.LineName = high ? "\u20AC" + std::string(79, 'n') : " a  b";
  line.LineAmount = Currency::FromRaw(high ? INT64_MAX : INT64_MIN);
  line.OfSubject = line.ToSubject = high ? 2'147'483'520 : INT32_MIN;
  line.OfStackNum = line.Spare1 = line.ToStackNum = line.Spare2 = line.LineKind;
  return line;
}

TEST_F(ScriptFile, EveryFieldSurvives) {
  const std::string path = folder_ / "Extreme W\u00FCrfel.bet";
  const std::vector<ScriptLine> lines = {ExtremeLine(true), ExtremeLine(false), ScriptLine(),
                                         ReadLine("'a remark")};
  for (const ScriptLine& line : lines) InsertLine(Game.ScrCount + 1, line);
  Line(1).LineText += "cut";
  Line(1).LineName += "cut";
  Line(1).OfSubject = INT32_MAX;
  Line(1).OfStackNum = 100'000;
  SaveScript(path);
  EXPECT_EQ(std::pair(Game.LastFileResult, Game.AutoBetFile), std::pair(5 * 256, path));
  ClearScript();
  Game.ScriptInsertLine = 3;
  Game.ScriptStale = false;
  OpenScript(path);
  EXPECT_EQ(Standing(), std::tuple(lines, 4, Game.Flags, Game.ScriptLabels, path, true, 1));
  EXPECT_EQ(Game.LastFileResult, 5 * 256);
  EXPECT_TRUE(Game.ScriptStale);
}

/// A line with a number of its own in each field. In the old layout the amount is narrower by 4.
Record FullRecord(bool old) {
  const std::size_t shift = old ? 4 : 0;
  Record record;
  record.PutText(0, 128, " line");
  record.PutInteger(128, ActionLine);
  record.PutLong(130, SetFlag);
  record.PutText(134, 80, "Flag");
  record.PutMoney(214, Currency::FromRaw(12'345'601));
  if (old) record.PutSingle(214, 1234.56F);
  record.PutSingle(222 - shift, 1);
  record.PutInteger(226 - shift, 2);
  record.PutInteger(228 - shift, 3);
  record.PutSingle(230 - shift, 4);
  record.PutInteger(234 - shift, 5);
  record.PutInteger(236 - shift, 6);
  record.PutText(238 - shift, 18 + shift, old ? "reserved, not blank" : "");
  return record;
}

TEST_F(ScriptFile, FieldsStandAtTheirOffsetsInBothFormats) {
  Record oldHeader = Header("Kelvanor AutoBets, Data Format 3.9", 0);
  oldHeader.PutSingle(214, 1.4F);
  OpenScript(Write("old.bet", {oldHeader, FullRecord(true), FullRecord(true)}));
  const ScriptLine line = {
      " line", ActionLine, SetFlag, "Flag", Currency::FromRaw(12'345'601), 1, 2, 3, 4, 5, 6};
  EXPECT_EQ(Game.Script, std::vector{line});
  EXPECT_THAT(FlagNames(), ElementsAre("Flag"));
  Record header = Header50(1);
  header.PutText(134, 80, "");
  header.PutText(238, 18, "");
  SaveScript(folder_ / "new.bet");
  EXPECT_EQ(folder_.Read("new.bet"), Joined({header, FullRecord(false)}));

  for (const float bad : {std::nanf(""), 1e20F, -1.0F, 1'000'001.0F}) {
    oldHeader.PutSingle(214, bad);
    ExpectRefused(Write("old.bet", {oldHeader, FullRecord(true)}), kCorrupted);
  }
  oldHeader.PutSingle(214, 1);
  Record tooLarge = FullRecord(true);
  tooLarge.PutSingle(214, 1e20F);
  ExpectRefused(Write("old.bet", {oldHeader, tooLarge}), kCorrupted);
}

TEST_F(ScriptFile, EveryRefusalHasItsText) {
  LoadScript(kSmallScript);
  const std::string older =
      "\nhas either been corrupted or was written with an older format which is no longer in use.";
  const std::tuple<const char*, double, std::string> headers[] = {
      {"Kelvanor AutoBets, Data Format 5.1", 0, "\nrequires Kelvanor version 5.1 or later to run."},
      {"Kelvanor AutoBets, Data Format 11.0", 0, "\nrequires Kelvanor version 11 or later to run."},
      {"Kelvanor AutoBets, Data Format 4.9", 0, older},
      {"Kelvanor AutoBets", 0, older},
      {" Kelvanor AutoBets, Data Format 5.0", 0, kCorrupted},
      {"kelvanor AutoBets, Data Format 5.0", 0, kCorrupted},
      {"Kelvanor AutoBets, Data Format 5.0", -1, kCorrupted},
      {"Kelvanor AutoBets, Data Format 5.0", 1.5, kCorrupted},
      {"Kelvanor AutoBets, Data Format 5.0", 1'000'001, kCorrupted}};
  for (const auto& [header, count, text] : headers)
    ExpectRefused(Write("a.bet", {Header(header, count)}), text);
  ExpectRefused(folder_.Write("empty.bet", ""), kCorrupted);
  ExpectRefused(folder_ / "none.bet", kCorrupted);
  ExpectRefused("", kCorrupted);
  fs::create_directory(folder_ / "sub");
  ExpectRefused(folder_ / "sub",
                "\ncan't be read: it's a folder.\n\nFolder:  " +
                    PathOf(folder_ / "sub").parent_path().string(),
                -1);
  EXPECT_THAT(Game.LastErrorText, EndsWith("occurred, at: Open Auto-Bet File\n"));
  for (const float bad : {std::nanf(""), 2147483648.0F, -3e9F}) {
    Record of, to;
    of.PutSingle(222, bad);
    to.PutSingle(230, bad);
    for (const Record& line : {of, to})
      ExpectRefused(Write("a.bet", {Header50(2), Record(), line}), kCorrupted);
  }
}

TEST_F(ScriptFile, NamesAreRegisteredOnce) {
  Save("a.bet",
       "Label \" Loop \"\nLabel \"loop\"\nLabel \"Änd Š\"\n"
       "Label \"äND š\"\nFlag \"Hot \" is True\nSet flag \"HOT\" to True\n"
       "Set flag \"Cold\" to True\nAny flag is True\nGo to \"no\"\n");
  Game.Flags[0].FlagValue = kTrue;
  OpenScript(folder_ / "a.bet");
  EXPECT_THAT(Game.ScriptLabels, ElementsAre(" Loop", "\u00C4nd \u0160"));
  EXPECT_THAT(FlagNames(), ElementsAre("Hot", "Cold"));
  EXPECT_EQ(Game.Flags[0].FlagValue, kFalse);
  EXPECT_EQ(FindFlag(" Hot "), 0);
  EXPECT_EQ(FindFlag("hot"), -1) << "a look-up minds case";

  // A subject that only rounds to that of flags names none.
  std::string bytes = folder_.Read("a.bet");
  bytes[5 * 256 + 222] = 1;
  OpenScript(folder_.Write("b.bet", bytes));
  EXPECT_EQ(Line(5).OfSubject, OneFlag);
  EXPECT_THAT(FlagNames(), ElementsAre("HOT", "Cold"));
}

TEST_F(ScriptFile, PasteAndCopySelected) {
  Save("small.bet", kSmallScript);
  Save("mine.bet", "Label \"x\"\nLabel \"LOOP\"\nDo this . . .");
  const auto paste = [this](const char* name, int before) {
    for (ScriptLine& line : Game.Script) line.LineSelected = (line.LineMark = 1) != 0;
    Game.ScriptCopyMode = true;
    Game.ScriptInsertLine = before;
    OpenScript(folder_ / name);
    EXPECT_EQ(Game.ScriptInsertLine, before);
  };
  const auto selected = [] {
    std::vector<int> numbers;
    for (int number = 1; number <= std::ssize(Game.Script); ++number) {
      EXPECT_EQ(Line(number).LineMark, 0);
      if (Line(number).LineSelected) numbers.push_back(number);
    }
    return numbers;
  };
  paste("small.bet", 2);
  EXPECT_THAT(LineTexts(), ElementsAre("Label \"x\"", "When . . .", "Flag \"Hot\" is True",
                                       "Label \"Loop\"", "Label \"LOOP\"", "Do this . . ."));
  EXPECT_THAT(selected(), ElementsAre(2, 3, 4));
  EXPECT_THAT(Game.ScriptLabels, ElementsAre("x", "LOOP"));
  EXPECT_TRUE(Game.ScriptChanged);

  Line(3).LineSelected = false;
  SaveScript(folder_ / "selected.bet");
  EXPECT_EQ(Game.AutoBetFile, folder_ / "mine.bet");
  Game.ScriptCopyMode = false;
  OpenScript(folder_ / "selected.bet");
  EXPECT_THAT(LineTexts(), ElementsAre("When . . .", "Label \"Loop\""));
  EXPECT_THAT(selected(), ElementsAre());

  // The lines that a Hot-Key's shorter script left in the table stay behind what is pasted.
  Save("one.bet", "Return");
  OpenScript(folder_ / "selected.bet");
  Game.HotKeyRunning = true;
  OpenScript(folder_ / "one.bet");
  Game.HotKeyRunning = false;
  EXPECT_EQ(Game.ScrCount, 1);
  paste("one.bet", 9);
  EXPECT_EQ(Game.ScrCount, 2);
  EXPECT_THAT(LineTexts(), ElementsAre("Return", "Return", "Label \"Loop\""));
  EXPECT_THAT(selected(), ElementsAre(2));
}

// --- Conversion ---

constexpr const char* kConvertTitle = "Convert Brindlemox to Kelvanor Auto-Bet File";

/// What an old code becomes, worked out bet by bet; -1 for a dropped line.
int NewCode(int old) {
  constexpr std::array<int, 5> kBases = {1, 19, 25, 31, 37};  // of families of six
  if (old == 0 || old == 9 || old > 88) return old;
  if (old >= 51) return old <= 53 ? old - 8 : old - 5;
  // Families have eight numbers each: 2, 3, 4, 5, 6, 8, 9, 10 ... with two strangers at the ends.
  const int digit = old % 10;
  if (digit < 3 || digit > 8) return -1;
  return kBases.at(static_cast<unsigned>(old / 10)) + digit - 3;
}

class ForeignScript : public ScriptFile {
 protected:
  std::string Foreign(double count, std::vector<Record> lines = {Record()}) const {
    lines.insert(lines.begin(), Header("Brindlemox AutoBets, Data Format 5.0", count));
    return Write("old.bet", lines);
  }

  /// Opens the file with answers planned; the last message that was shown.
  ShownMessage LastWord(const std::string& path, std::deque<PlannedAnswer> answers) {
    Answers = std::move(answers);
    OpenScript(path);
    return TakeShown().back();
  }
};

TEST_F(ForeignScript, EveryCodeIsMovedOrDropped) {
  std::vector<Record> lines;
  std::vector<std::pair<int, int>> expected;
  for (int code = 0; code <= 100; ++code)
    for (const std::size_t offset : {222U, 230U}) {
      Record line;
      line.PutInteger(128, static_cast<std::int16_t>(code));  // the kind is of no account
      line.PutSingle(offset, static_cast<float>(code));
      lines.push_back(line);
      if (NewCode(code) < 0) continue;
      expected.emplace_back(offset == 222 ? NewCode(code) : 0, offset == 230 ? NewCode(code) : 0);
    }
  const std::string path = Foreign(static_cast<double>(lines.size()), lines);
  const std::string before = folder_.Read("old.bet");
  EXPECT_TRUE(LastWord(path, {kYes}).Text.starts_with("old.bet\nwas created using Brindlemox"));
  std::vector<std::pair<int, int>> codes;
  for (const ScriptLine& line : Game.Script) codes.emplace_back(line.OfSubject, line.ToSubject);
  EXPECT_EQ(codes, expected);
  EXPECT_EQ(Game.AutoBetFile, folder_ / "old[kv].bet");
  EXPECT_EQ(Game.LastFileResult, static_cast<int>((expected.size() + 1) * kRecordSize));
  EXPECT_EQ(folder_.Read("old.bet"), before);
  OpenScript(folder_ / "old[kv].bet");
  EXPECT_EQ(Game.ScrCount, std::ssize(expected));
}

TEST_F(ForeignScript, QuestionsAndRefusals) {
  const std::string path = Foreign(1);
  const auto before = Standing();
  LastWord(path, {kNo});
  EXPECT_EQ(std::tuple(Game.LastFileResult, folder_.Count()), std::tuple(0, 1U));

  folder_.Write("old[kv].bet", "x");
  EXPECT_EQ(LastWord(path, {kYes, kNo}),
            (ShownMessage{"old[kv].bet\nis already on file.\n\nDo you want to overwrite it?",
                          kConvertTitle, 640, YesNo}));
  EXPECT_EQ(Game.LastFileResult, 0);
  for (const double count : {-1.0, 0.5, 1e9}) {
    EXPECT_EQ(LastWord(Foreign(count), {kYes, kYes}).Text, std::string("old.bet") + kCorrupted);
    EXPECT_EQ(Game.LastFileResult, 0);
  }
  EXPECT_EQ(folder_.Read("old[kv].bet"), "x");
  EXPECT_EQ(Standing(), before);

  LastWord(Foreign(1), {kYes, kYes});
  EXPECT_EQ(Game.ScrCount, 1);
  fs::remove(folder_ / "old[kv].bet");
  fs::create_directory(folder_ / "old[kv].bet");
  const ShownMessage word = LastWord(path, {kYes});
  EXPECT_EQ(word, Stop(kConvertTitle, 640, FileFailureText(path, "converted")));
  EXPECT_EQ(Game.LastFileResult, -1);
}

// --- Hot-Keys ---

using HotKeyFile = ScriptFile;

TEST_F(HotKeyFile, RowsSurviveAndDamageCostsNoMore) {
  const std::vector<HotKey> rows = {{'P', std::string(100, 'f'), "Pr\u00E9ss"}, {'q', "b.bet", ""}};
  Game.HotKeys = rows;
  SaveHotKeys();
  EXPECT_EQ(Game.LastFileResult, 3 * 256);
  const std::string bytes = folder_.Read("HotKeys.dta");
  EXPECT_EQ(bytes.substr(0, 24), "  Kelvanor Hot-Key File ");
  EXPECT_EQ(std::tuple(bytes.substr(101, 3), bytes.substr(256, 4)), std::tuple(" 2 ", "P ff"));
  EXPECT_EQ(bytes.substr(512 + 102, 154), std::string(154, ' '));
  Game.HotKeys.clear();
  LoadHotKeys();
  EXPECT_EQ(Game.HotKeys, rows);

  // Cut anywhere, the rest is there, and what couldn't be read is kept when the table is saved.
  for (std::size_t cut = 1; cut <= bytes.size(); ++cut) {
    folder_.Write("HotKeys.dta", bytes.substr(0, cut));
    fs::remove(folder_ / "HotKeys.bad");
    LoadHotKeys();
    const std::size_t whole = cut / 256;
    ASSERT_EQ(Game.HotKeys.size(), whole == 0 ? 0 : whole - 1) << cut;
    ASSERT_EQ(Game.HotKeysDamaged, cut < bytes.size()) << cut;
    SaveHotKeys();
    ASSERT_EQ(folder_.Read("HotKeys.bad"), cut < bytes.size() ? bytes.substr(0, cut) : "") << cut;
    LoadHotKeys();
    ASSERT_FALSE(Game.HotKeysDamaged) << cut;
  }

  // The program's own table is read until the player has one, and saving that fails is told.
  EXPECT_EQ(HotKeyFileName(folder_ / "a/b.bet"), "a/b.bet");
  Game.DataPath = folder_ / "gone/";
  LoadHotKeys();
  EXPECT_EQ(Game.HotKeys, rows);
  SaveHotKeys();
  EXPECT_EQ(std::tuple(Game.LastFileResult, TakeOnlyMessage().Title), std::tuple(-1, "Hot-Key"));
  EXPECT_EQ(folder_.Read("HotKeys.dta"), bytes);
}

TEST_F(HotKeyFile, WhatIsNoHotKeyIsRefused) {
  for (const HotKey& row : std::vector<HotKey>{{'A', "  ", "Press"},
                                               {'?', "a.bet", ""},
                                               {'A', std::string(101, 'f'), ""},
                                               {'A', "a.bet", "\u0416"}}) {
    EXPECT_FALSE(CheckedHotKey(row));
    EXPECT_EQ(TakeOnlyMessage().Title, "Hot-Key");
  }
  EXPECT_FALSE(HotKeysToPaste(" Ctrl A\ta.bet\t\nCtrl ?\ta.bet\t\n"));
  const HotKey row = *CheckedHotKey({'A', " a.bet ", "Press\n"});
  EXPECT_EQ(HotKeysToPaste(TextOfHotKeys({row}))->at(0), (HotKey{'A', "a.bet", "Press"}));
}

TEST_F(HotKeyFile, AKeyRunsItsFileAndTheScriptComesBack) {
  Save("hot.bet", "Do this . . .\nSet flag \"Pressed\" to True");
  Save("mine.bet", kSmallScript);
  Line(1).LineKind = WhileLine;  // not saved
  Game.HotKeys = {{'H', "hot.bet", ""}, {'h', "none.bet", ""}, {'n', "none.bet", ""}};
  EXPECT_FALSE(RunHotKey('x'));
  EXPECT_TRUE(RunHotKey('h'));
  EXPECT_THAT(FlagNames(), ElementsAre("Hot", "Pressed"));
  EXPECT_TRUE(Game.Flags.back().FlagValue == kTrue && Line(1).LineKind == WhenLine);
  EXPECT_EQ(std::tuple(Game.ScrCount, Game.AutoBetFile), std::tuple(3, folder_ / "mine.bet"));
  EXPECT_FALSE(Game.ScriptChanged || Game.HotKeyRunning);
  EXPECT_TRUE(TakeShown().empty());

  // A file that is refused runs nothing and takes nothing back.
  Line(1).LineKind = WhileLine;
  const auto before = Standing();
  EXPECT_TRUE(RunHotKey('N'));
  EXPECT_EQ(TakeOnlyMessage().Text,
            "The Auto-Bet file of this Hot-Key isn't there:\n\n" + folder_ / "none.bet");
  folder_.Write("none.bet", "rubbish");
  EXPECT_TRUE(RunHotKey('N'));
  EXPECT_EQ(TakeOnlyMessage().Text, std::string("none.bet") + kCorrupted);
  EXPECT_EQ(Standing(), before);
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
  EXPECT_TRUE(Game.ScrCount == 2 && Game.Script.size() == 3);
}

}  // namespace
