#pragma once

#include <QFile>
#include <QString>
#include <string_view>

namespace velmora {

/// A log in a folder that is private, in a file that its owner alone can read. It begins anew; when it is full it
/// becomes the file beside it, whose name ends in "-before", and a new one begins. What stands there before, be it a
/// link, gives way. Where it can't be written, as on a full disk, it just stops.
class ProtocolLog {
 public:
  static constexpr qint64 largest = qint64{1} << 20U;  ///< bytes of each of the two files

  explicit ProtocolLog(const QString& path);

  /// It can be written.
  bool goesOn() const { return file_.isOpen(); }

  /// Writes a line of text with the present moment in front of it.
  void write(std::string_view line);

 private:
  void begin();
  void beginNext();

  QString former_;
  QFile file_;
};

}  // namespace velmora
