#include "screens/rules/text_table_report.h"

#include <memory>

#include "screens/frame/controls.h"

namespace {

QStringList Cells(const std::vector<std::string>& texts) {
  QStringList cells;
  for (const std::string& text : texts) cells << Text(text);
  return cells;
}

}  // namespace

Report ReportOf(TextTable table) {
  const auto shared = std::make_shared<const TextTable>(std::move(table));
  Report report;
  report.Title = Text(shared->Title);
  report.Heading = GameHeading(report.Title);
  if (!shared->Note.empty()) report.Heading << Text(shared->Note);
  report.Columns = Cells(shared->Heads);
  report.Align = [](int column) {
    return Qt::Alignment(column == 0 ? Qt::AlignLeft : Qt::AlignRight);
  };
  report.Rows = static_cast<int>(shared->Rows.size());
  report.Row = [shared](int row) { return Cells(shared->Rows[static_cast<unsigned>(row)]); };
  return report;
}
