#include "main/command_line.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <cstdio>

#include "persistence/file_commands.h"

std::optional<QString> ReadCommandLine(const QStringList& arguments, int& exitCode) {
  QCommandLineParser parser;
  parser.setApplicationDescription("A craps table for practising and for testing betting systems.");
  const QCommandLineOption help = parser.addHelpOption();
  const QCommandLineOption version = parser.addVersionOption();
  parser.addPositionalArgument("file",
                               "a game (.crp), a script (.bet), a tape of rolls (.rol) or "
                               "skewed dice (.prb) to open",
                               "[file]");
  const bool understood = parser.parse(arguments);
  const QStringList files = parser.positionalArguments();
  exitCode = 0;
  if (understood && parser.isSet(help)) {
    std::fputs(qPrintable(parser.helpText()), stdout);
    return std::nullopt;
  }
  if (understood && parser.isSet(version)) {
    std::printf("kelvanor %s\n", KELVANOR_VERSION);
    return std::nullopt;
  }
  QString fault = understood ? QString() : parser.errorText();
  if (fault.isEmpty() && files.size() > 1) fault = "One file can be opened at a time.";
  if (fault.isEmpty() && !files.isEmpty() && !OpenCommandOf(files.first().toStdString()))
    fault = files.first() + ": not a .crp, .bet, .rol, .prb or .glg file.";
  if (fault.isEmpty())
    return files.isEmpty() ? QString() : QFileInfo(files.first()).absoluteFilePath();
  std::fprintf(stderr, "%s\nUsage: kelvanor [--help] [--version] [file]\n", qPrintable(fault));
  exitCode = 2;
  return std::nullopt;
}
