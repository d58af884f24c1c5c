#include "screens/frame/handbook.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <algorithm>

#include "core/game_state.h"
#include "screens/frame/controls.h"

namespace {

const QRegularExpression& TopicMark() {
  static const QRegularExpression mark("^<!--\\s*topic:([\\d\\s]+)-->\\s*$");
  return mark;
}

/// A heading's text, or nothing.
QString HeadingIn(const QString& line) {
  static const QRegularExpression heading("^#{1,6}\\s+(.+?)\\s*#*$");
  return heading.match(line).captured(1);
}

/// The name of a heading in a link: its words in lower case, with hyphens between.
QString LinkName(const QString& heading) {
  QString name;
  for (const QChar letter : heading.toLower()) {
    if (letter.isLetterOrNumber() || letter == '-' || letter == '_') name += letter;
    if (letter == ' ') name += '-';
  }
  return name;
}

/// A line of Markdown as it reads.
QString Plain(QString line) {
  static const QRegularExpression link("!?\\[([^\\]]*)\\]\\([^)]*\\)");
  static const QRegularExpression signs("[*`|>#]+|^\\s*[-+]\\s");
  return line.replace(link, "\\1").replace(signs, " ").simplified();
}

bool HoldsAll(const QString& text, const QStringList& words) {
  return std::all_of(words.begin(), words.end(),
                     [&](const QString& word) { return text.contains(word, Qt::CaseInsensitive); });
}

}  // namespace

Handbook::Handbook(const QString& folder) {
  const QDir pages(folder);
  QStringList files = pages.entryList({"*.md"}, QDir::Files, QDir::Name);
  if (!files.removeOne(kContentsPage)) {
    for (const QString& file : files) Read(folder, file);
    return;
  }
  Read(folder, kContentsPage);
  static const QRegularExpression link("\\]\\(([^)#]+\\.md)");
  auto links = link.globalMatch(Page(kContentsPage)->Markdown);
  while (links.hasNext())
    if (const QString file = links.next().captured(1); files.removeOne(file)) Read(folder, file);
  for (const QString& file : files) Read(folder, file);
}

void Handbook::Read(const QString& folder, const QString& file) {
  QFile source(QDir(folder).filePath(file));
  if (!source.open(QIODevice::ReadOnly | QIODevice::Text)) return;
  HandbookPage page{file, file, {}, {}};
  std::vector<int> awaiting;  // topics whose heading comes next
  while (!source.atEnd()) {
    const QString line = QString::fromUtf8(source.readLine()).remove('\n');
    if (const auto mark = TopicMark().match(line); mark.hasMatch()) {
      for (const QString& number : mark.captured(1).simplified().split(' '))
        awaiting.push_back(number.toInt());
      continue;
    }
    if (line.startsWith("<!--")) continue;
    page.Markdown += line + '\n';
    const QString heading = HeadingIn(line);
    if (heading.isEmpty()) continue;
    if (page.Headings.isEmpty()) page.Title = heading;
    for (const int topic : awaiting) topics_[topic] = {file, heading};
    awaiting.clear();
    page.Headings << heading;
  }
  pages_.push_back(std::move(page));
}

const HandbookPage* Handbook::Page(const QString& file) const {
  const auto at = std::find_if(pages_.begin(), pages_.end(),
                               [&](const HandbookPage& page) { return page.File == file; });
  return at == pages_.end() ? nullptr : &*at;
}

std::optional<HandbookPlace> Handbook::PlaceOf(int topic) const {
  const auto at = topics_.find(topic);
  if (at == topics_.end()) return std::nullopt;
  return at->second;
}

std::optional<HandbookPlace> Handbook::PlaceOfLink(const QString& page, const QString& link) const {
  const QString file = link.section('#', 0, 0);
  const QString name = link.section('#', 1);
  const HandbookPage* to = Page(file.isEmpty() ? page : file);
  if (!to) return std::nullopt;
  if (name.isEmpty()) return HandbookPlace{to->File, {}};
  for (const QString& heading : to->Headings)
    if (LinkName(heading) == name) return HandbookPlace{to->File, heading};
  return std::nullopt;
}

std::vector<HandbookHit> Handbook::Search(const QString& words) const {
  const QStringList all = words.simplified().split(' ', Qt::SkipEmptyParts);
  if (all.isEmpty()) return {};
  std::vector<HandbookHit> titles;
  std::vector<HandbookHit> headings;
  std::vector<HandbookHit> lines;
  for (const HandbookPage& page : pages_) {
    QString heading;
    bool told = false;  // of this heading
    for (const QString& line : page.Markdown.split('\n')) {
      const bool first = heading.isEmpty();
      if (const QString next = HeadingIn(line); !next.isEmpty()) {
        heading = next;
        told = HoldsAll(heading, all);
        if (told)
          (first ? titles : headings).push_back({{page.File, heading}, page.Title, heading});
      } else if (!told && HoldsAll(Plain(line), all)) {
        told = true;
        lines.push_back({{page.File, heading}, page.Title, Plain(line)});
      }
    }
  }
  titles.insert(titles.end(), headings.begin(), headings.end());
  titles.insert(titles.end(), lines.begin(), lines.end());
  return titles;
}

QString HandbookFolder() { return Text(Game.AppPath) + "handbook"; }
