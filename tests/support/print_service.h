#pragma once

#include <QByteArray>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

namespace velmora::test {

/// A print service of its own (`scripts/print_service`), which this process prints on as a user without wishes. It ends
/// with this object.
class PrintService {
 public:
  PrintService();
  ~PrintService() { end(); }
  PrintService(const PrintService&) = delete;
  PrintService& operator=(const PrintService&) = delete;

  /// From the next job on, the printer stops in its middle and says why.
  void hold(const QByteArray& reasons);
  void goOn();

  /// The numbers of the jobs that are printed.
  QStringList printed() const;

  /// The pages of one of them, as PDF.
  QString pages(const QString& job) const { return folder_.filePath("service/printed/" + job + ".pdf"); }

  /// Its title, and in another line its options.
  QByteArray wishes(const QString& job) const;

  void end();

 private:
  QTemporaryDir folder_{"/tmp/velmora-XXXXXX"};  // right under /tmp: its socket's name must be short
  QProcess service_;
};

/// What a program writes, run to its end. One that fails also fails the test.
QByteArray outputOf(const QString& program, const QStringList& arguments);

}  // namespace velmora::test
