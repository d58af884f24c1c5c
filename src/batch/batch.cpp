#include "batch/batch.h"

#include <system_error>

#include "batch/failure.h"
#include "batch/merge.h"
#include "batch/options.h"
#include "batch/play.h"
#include "batch/show_figures.h"

namespace {

int Obey(const BatchOptions& options, Console& console) {
  switch (options.Command) {
    case BatchCommand::Help: console.Out << kBatchHelp; return BatchDone;
    case BatchCommand::Version:
      console.Out << "kelvanor-batch " KELVANOR_VERSION "\n";
      return BatchDone;
    case BatchCommand::Play: return PlayPopulation(options, console);
    case BatchCommand::Tape: return WriteTape(options, console);
    case BatchCommand::Merge: return MergeFiles(options);
    case BatchCommand::Figures: return ShowFigures(options, console);
    case BatchCommand::Compare: return ShowComparison(options, console);
  }
  return BatchUsage;
}

}  // namespace

int RunBatch(std::span<const std::string> arguments, Console& console) {
  BatchOptions options;
  try {
    options = ReadArguments(arguments);
    return Obey(options, console);
  } catch (const UsageFailure& failure) {
    console.Err << kBatchName << failure.what()
                << "\nTry \"kelvanor-batch --help\" for how to say it.\n";
    return BatchUsage;
  } catch (const std::system_error& failure) {
    const std::string about = options.Out.empty() ? "" : options.Out + ": ";
    const bool busy = failure.code() == std::errc::text_file_busy;
    console.Err << kBatchName << about
                << (busy ? "another program is writing this log" : failure.code().message())
                << "\n";
  } catch (const std::exception& failure) {
    console.Err << kBatchName << failure.what() << "\n";
  }
  return BatchFailed;
}
