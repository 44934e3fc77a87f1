#include "platform/qt/services/run_at_logon.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QStandardPaths>

namespace velmora {

namespace {

QString entryFolder() { return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/autostart"; }

QString entryFile() { return entryFolder() + "/Velmora.desktop"; }

/// A program's path as the Exec key wants it (Desktop Entry Specification, "The Exec key").
QString quoted(QString path) {
  for (const auto* special : {"\\", "\"", "`", "$"}) path.replace(special, QString("\\") + special);
  path.replace("\\", "\\\\");  // once more, as in the value of any key
  return '"' + path.replace("%", "%%") + '"';
}

}  // namespace

void addLogonEntry() {
  QDir().mkpath(entryFolder());
  QSaveFile file(entryFile());
  if (!file.open(QIODevice::WriteOnly)) return;
  const QString text =
      "[Desktop Entry]\nType=Application\nName=Velmora\nComment=Keeps watch over POP3 mailboxes\n"
      "Icon=Velmora\nTerminal=false\nExec=" +
      quoted(QCoreApplication::applicationFilePath()) + "\n";
  file.write(text.toUtf8());
  file.commit();
}

void removeLogonEntry() { QFile::remove(entryFile()); }

}  // namespace velmora
