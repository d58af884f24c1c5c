#include "core/error_report.h"

#include <new>
#include <system_error>

#include "core/faults.h"
#include "core/game_state.h"

namespace {

constexpr int kOutOfMemoryNumber = 7;
constexpr int kOtherFailureNumber = 51;  // a failure of the library or the system

void StoreError(const std::string& description, int number, const std::string& place) {
  Game.LastErrorText =
      description + ", Error #" + std::to_string(number) + " occurred, at: " + place + "\n";
}

}  // namespace

void ReportError(const std::string& place) {
  Game.LastSystemError = 0;
  try {
    throw;
  } catch (const RunTimeFault& fault) {
    StoreError(fault.Text, fault.Number, place);
  } catch (const std::bad_alloc&) {
    StoreError("Out of memory", kOutOfMemoryNumber, place);
  } catch (const std::system_error& failure) {
    StoreError(failure.what(), kOtherFailureNumber, place);
    Game.LastSystemError = failure.code().default_error_condition().value();
  } catch (const std::exception& failure) {
    StoreError(failure.what(), kOtherFailureNumber, place);
  } catch (...) {
    StoreError("Unknown failure", kOtherFailureNumber, place);
  }
}
