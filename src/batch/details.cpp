#include "batch/details.h"

#include "core/text.h"

const char* const kDetailsHeading =
    "seed,index,ended,highest bankroll,lowest bankroll,deepest fall,most at risk,"
    "longest losing streak,bets refused\n";

namespace {

const char* WordsOf(EndReason reason) {
  switch (reason) {
    case EndReason::Rolls: return "rolls";
    case EndReason::NewGame: return "new game";
    case EndReason::Stopped: return "stopped";
    case EndReason::BankLimit: return "bank limit";
    case EndReason::Question: return "question";
    case EndReason::Fault: break;
  }
  return "fault";
}

}  // namespace

std::string DetailsLine(std::uint64_t seed, const GameDetails& details) {
  std::string line =
      std::to_string(seed) + "," + std::to_string(details.Index) + "," + WordsOf(details.Ended);
  for (const Currency amount :
       {details.HighestBankroll, details.LowestBankroll, details.DeepestFall, details.MostAtRisk})
    line += "," + PlainText(amount);
  return line + "," + std::to_string(details.LosingStreak) + "," +
         std::to_string(details.RefusedBets) + "\n";
}
