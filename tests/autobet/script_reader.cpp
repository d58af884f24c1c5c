#include "autobet/script_reader.h"

#include <sstream>
#include <stdexcept>

#include "autobet/read_line.h"
#include "autobet/script.h"

ScriptLine ReadLine(const std::string& text) {
  const std::optional<ScriptLine> line = ReadLineText(text);
  if (!line) throw std::runtime_error("No line of a script: " + text);
  return *line;
}

std::vector<ScriptLine> ReadScript(const std::string& text) {
  std::vector<ScriptLine> script;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    const std::size_t first = line.find_first_not_of(" \t\r");
    if (first != std::string::npos && line[first] != '#') script.push_back(ReadLine(line));
  }
  return script;
}

void LoadScript(const std::string& text) {
  std::vector<ScriptLine> script = ReadScript(text);
  ClearScript();
  Game.Script = std::move(script);
  Game.ScrCount = static_cast<int>(Game.Script.size());
  for (const ScriptLine& line : Game.Script) RegisterNames(line);
  ScriptEdited();
}
