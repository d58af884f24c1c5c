// The handbook: pages of Markdown in a folder beside the program, found by topic and by words.
#pragma once

#include <QString>
#include <QStringList>
#include <map>
#include <optional>
#include <vector>

/// A place in the handbook: a page's file, and a heading of it; none for its beginning.
struct HandbookPlace {
  QString File;
  QString Heading;

  bool operator==(const HandbookPlace&) const = default;
};

struct HandbookPage {
  QString File;
  QString Title;
  QString Markdown;  // without the marks of topics
  QStringList Headings;
};

/// A place that words were found at, and the line they stand in.
struct HandbookHit {
  HandbookPlace Place;
  QString Title;
  QString Line;
};

/// All pages of a folder. A line `<!-- topic: 310 311 -->` before a heading says that the topics of
/// these numbers open there.
class Handbook {
 public:
  /// Without pages.
  Handbook() = default;

  /// Reads the pages, in the order in which `contents.md` leads to them. A folder without pages
  /// gives an empty handbook.
  explicit Handbook(const QString& folder);

  const std::vector<HandbookPage>& Pages() const { return pages_; }
  const HandbookPage* Page(const QString& file) const;

  /// Where a topic opens; nothing for one that the handbook doesn't know.
  std::optional<HandbookPlace> PlaceOf(int topic) const;

  /// Where a link leads that stands on a page: "place.md", "place.md#to-buy-it" or "#to-buy-it".
  /// Nothing for a page or a heading that isn't there.
  std::optional<HandbookPlace> PlaceOfLink(const QString& page, const QString& link) const;

  /// The places that hold all of the words, whatever their case: titles first, then headings, then
  /// lines of text, at most one line for each heading.
  std::vector<HandbookHit> Search(const QString& words) const;

 private:
  void Read(const QString& folder, const QString& file);

  std::vector<HandbookPage> pages_;
  std::map<int, HandbookPlace> topics_;
};

inline constexpr const char* kContentsPage = "contents.md";

/// The folder of the handbook, beside the program's other files.
QString HandbookFolder();
