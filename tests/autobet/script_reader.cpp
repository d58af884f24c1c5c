#include "autobet/script_reader.h"

#include <sstream>
#include <stdexcept>

#include "autobet/read_line.h"

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

void LoadLines(const std::vector<ScriptLine>& lines) {
  Game.Script = lines;
  Game.ScrCount = static_cast<int>(lines.size());
  ScriptEdited();
}

void LoadScript(const std::string& text) {
  const std::vector<ScriptLine> lines = ReadScript(text);
  ClearScript();
  LoadLines(lines);
  for (const ScriptLine& line : lines) RegisterNames(line);
}

std::vector<int> CodesOf(std::span<const ListItem> list) {
  std::vector<int> codes;
  for (const ListItem& item : list)
    if (item.Text != kSeparatorText) codes.push_back(item.Code);
  return codes;
}
