// The batch program's entry.
#include <unistd.h>

#include <iostream>
#include <string>
#include <vector>

#include "batch/batch.h"

int main(int count, char* arguments[]) {
  Console console{std::cout, std::cerr, ::isatty(STDERR_FILENO) != 0};
  const std::vector<std::string> words(arguments + 1, arguments + count);
  return RunBatch(words, console);
}
