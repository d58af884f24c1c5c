#include "screens/choose_file.h"

#include <QFileDialog>
#include <QFileInfo>

namespace {

QString AskForFile(QWidget* parent, const FileQuestion& question) {
  const QFileInfo start(question.Start);
  QFileDialog dialog(parent, question.Title,
                     start.isDir() ? start.absoluteFilePath() : start.absolutePath(),
                     QString("%1 (%2)").arg(question.Kind, question.Pattern));
  dialog.setObjectName("frmFile");
  if (question.ForSaving) {
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
  } else {
    dialog.setFileMode(QFileDialog::ExistingFile);
  }
  if (!start.isDir()) dialog.selectFile(start.fileName());
  if (dialog.exec() != QDialog::Accepted) return {};
  return dialog.selectedFiles().value(0);
}

}  // namespace

std::function<QString(QWidget*, const FileQuestion&)> ChooseFile = AskForFile;
