#include "dice/tape.h"

#include <fstream>

namespace {

bool IsFace(int face) { return face >= 1 && face <= 6; }

std::streamoff OffsetOf(int record) { return static_cast<std::streamoff>(record) - 1; }

}  // namespace

unsigned char DiceByte(int die1, int die2) {
  return static_cast<unsigned char>(die2 * 32 + die1 * 4);
}

TapeRead ReadRecordedRoll() {
  std::ifstream file(Game.DiceRollFile, std::ios::binary);
  char byte = 0;
  if (Game.DiceFilePos < 1 || !file.seekg(OffsetOf(Game.DiceFilePos)) || !file.get(byte))
    return TapeRead::End;
  const int value = static_cast<unsigned char>(byte);
  const int die1 = (value >> 2) & 7;
  const int die2 = value >> 5;
  if (!IsFace(die1) || !IsFace(die2)) {
    Game.RecorderStatus = RecorderOff;
    return TapeRead::BadByte;
  }
  Game.Die1 = die1;
  Game.Die2 = die2;
  ++Game.DiceFilePos;
  return TapeRead::Throw;
}

void WriteRecordedRoll() {
  std::fstream file(Game.DiceRollFile, std::ios::binary | std::ios::in | std::ios::out);
  const char byte = static_cast<char>(DiceByte(Game.Die1, Game.Die2));
  if (!file.seekp(OffsetOf(Game.DiceFilePos)) || !file.put(byte) || !file.flush()) {
    Game.RecorderStatus = RecorderOff;
    Game.LastErrorText = "The throw could not be written to " + Game.DiceRollFile + "\n";
    return;
  }
  Game.DiceFileLast = Game.DiceFilePos++;
}
