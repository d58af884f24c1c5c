#include "dice/probability_file.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "core/error_report.h"
#include "core/file_failure.h"
#include "core/game_state.h"
#include "core/help_topics.h"
#include "core/messages.h"
#include "core/record_file.h"
#include "dice/matrix.h"

namespace {

constexpr std::string_view kHeaderText = "Kelvanor Probability File, Data Format 4.6";
constexpr std::size_t kHeaderWidth = 92;
constexpr const char* kUnableToOpenTitle = "Unable to Open Kelvanor Probability File";
constexpr const char* kUnableToSaveTitle = "Unable to Save Kelvanor Probability File";

constexpr std::size_t kValues = 2 * kMatrixColumns * kMatrixRows;
constexpr std::size_t kValueWidth = 4;
constexpr std::size_t kValuesPerRecord = kRecordSize / kValueWidth;
constexpr std::size_t kFirstValueRecord = 2;
constexpr std::size_t kFileRecords = 5;
constexpr std::size_t kShortestFile = kRecordSize + kValues * kValueWidth;

constexpr int kFirstCellColumn = 2;

constexpr int kLoaded = 1;
constexpr int kRefused = 0;

using Matrix = ProbabilityMatrix;

Matrix ReadMatrix(const RecordFile& file) {
  Matrix matrix{};
  std::size_t value = 0;
  for (auto& layer : matrix) {
    for (auto& column : layer) {
      for (int& cell : column) {
        const Record record = file.At(kFirstValueRecord + value / kValuesPerRecord);
        cell = record.Long(value % kValuesPerRecord * kValueWidth);
        ++value;
      }
    }
  }
  return matrix;
}

/// True when there is a share among the 36 cells and none of any kind is below 0.
bool CanBeThrown(const Matrix& matrix) {
  bool anyShare = false;
  for (int column = 0; column < kMatrixColumns; ++column) {
    const auto& rows = matrix[kSharesLayer][static_cast<unsigned>(column)];
    if (std::any_of(rows.begin(), rows.end(), [](int share) { return share < 0; })) return false;
    for (int row = column - 1; column >= kFirstCellColumn && row <= 13 - column; ++row)
      anyShare = anyShare || rows[static_cast<unsigned>(row)] > 0;
  }
  return anyShare;
}

std::optional<Matrix> ReadFile(const std::string& path) {
  const RecordFile file = ReadRecords(path, kFileRecords);
  if (file.Length < kShortestFile || file.At(1).Text(0, kHeaderWidth) != kHeaderText) return {};
  const Matrix matrix = ReadMatrix(file);
  if (!CanBeThrown(matrix)) return {};
  return matrix;
}

std::vector<Record> MakeRecords(const Matrix& matrix) {
  std::vector<Record> records(kFileRecords);
  records[0].PutText(0, kHeaderWidth, kHeaderText);
  std::size_t value = 0;
  for (const auto& layer : matrix) {
    for (const auto& column : layer) {
      for (const int cell : column) {
        Record& record = records[kFirstValueRecord - 1 + value / kValuesPerRecord];
        record.PutLong(value % kValuesPerRecord * kValueWidth, cell);
        ++value;
      }
    }
  }
  return records;
}

void Tell(const char* title, const std::string& text) {
  if (!Game.HyperDriveOn) {
    ShowMessage(text, title, kTopicProbability, OkStop);
    return;
  }
  Game.KeepRolling = false;
  Game.StopMessage = text;
}

}  // namespace

void LoadProbabilityFile(const std::string& path) {
  try {
    const std::optional<Matrix> matrix = ReadFile(path);
    Game.LastFileResult = matrix ? kLoaded : kRefused;
    if (!matrix) {
      Tell(kUnableToOpenTitle,
           BareName(path) +
               "\nis either from an older version, has been corrupted, or is not a true Kelvanor "
               "Probability File.");
      return;
    }
    Game.ProbMatrix = *matrix;
    Game.PrbFileName = path;
    Game.ProbabilityChanged = false;
  } catch (const std::exception&) {
    ReportError("Open Probability File");
    Game.LastFileResult = kSystemFailed;
    Tell(kUnableToOpenTitle, FileFailureText(path, "read"));
  }
}

bool WriteProbabilityFile(const std::string& path) {
  try {
    const std::vector<Record> records = MakeRecords(Game.ProbMatrix);
    WriteRecords(path, records);
    Game.LastFileResult = static_cast<int>(records.size() * kRecordSize);
    return true;
  } catch (const std::exception&) {
    ReportError("Save Probability File");
    Game.LastFileResult = kSystemFailed;
    Tell(kUnableToSaveTitle, FileFailureText(path, "written"));
    return false;
  }
}

bool StoreProbability(const std::string& path) {
  WriteRecords(path, MakeRecords(Game.ProbMatrix));
  return true;
}

void SaveProbabilityFile(const std::string& path) {
  if (!WriteProbabilityFile(path)) return;
  Game.PrbFileName = path;
  Game.ProbabilityChanged = false;
}
