#include "platform/qt/services/file_dialogs.h"

#include <QFileDialog>
#include <QFileInfo>

#include "platform/file_name.h"
#include "platform/platform.h"
#include "platform/qt/strings.h"
#include "platform/qt/widgets/harmless_text.h"

namespace velmora {

namespace {

/// "Text File (*.txt)|*.txt|" becomes "Text File (*.txt)".
QStringList nameFilters(const std::string& filter) {
  const QStringList parts = qt(filter).split('|', Qt::SkipEmptyParts);
  QStringList names;
  for (qsizetype i = 0; i < parts.size(); i += 2) names += parts[i];
  return names;
}

QString suffixOf(const QString& nameFilter) { return nameFilter.section("*.", 1).section(')', 0, 0); }

/// Shows the file, or the folder that it should lie in. What is neither leaves the dialog where it is.
void beginAt(QFileDialog& dialog, const QString& start) {
  const QFileInfo file(start);
  if (!file.isAbsolute()) return;
  if (file.isDir()) {
    dialog.setDirectory(start);
  } else if (file.isFile()) {
    dialog.selectFile(start);
  } else if (QFileInfo(file.path()).isDir()) {
    dialog.setDirectory(file.path());
  }
}

}  // namespace

std::optional<std::string> fileToOpen(QFileDialog& dialog, const FileQuestion& question) {
  dialog.setAcceptMode(QFileDialog::AcceptOpen);
  dialog.setFileMode(QFileDialog::ExistingFile);
  dialog.setNameFilters(nameFilters(question.filter));
  dialog.setOption(QFileDialog::DontResolveSymlinks);
  beginAt(dialog, qt(question.start));
  if (!question.name.empty()) dialog.selectFile(harmlessLine(question.name));
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return utf8(dialog.selectedFiles().value(0));
}

std::optional<std::string> fileToSave(QFileDialog& dialog, const FileQuestion& question, const bool& quitting) {
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setNameFilters(nameFilters(question.filter));
  const auto saved = [&](const QString& name) {
    auto endings = fileEndings(question.filter);
    endings.insert(endings.begin(), utf8('.' + suffixOf(dialog.selectedNameFilter())));
    return qt(savedName(utf8(name), endings));
  };
  dialog.selectFile(saved(harmlessLine(question.name)));
  const auto followFilter = [&dialog](const QString& filter) { dialog.setDefaultSuffix(suffixOf(filter)); };
  QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, followFilter);
  followFilter(dialog.selectedNameFilter());
  while (!quitting && dialog.exec() == QDialog::Accepted) {
    const QFileInfo chosen(dialog.selectedFiles().value(0));
    const QString name = saved(chosen.fileName());
    if (name == chosen.fileName()) return utf8(chosen.filePath());
    dialog.setDirectory(chosen.path());
    dialog.selectFile(name);
  }
  return std::nullopt;
}

}  // namespace velmora
