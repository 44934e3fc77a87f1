#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QTimer>
#include <QVariant>
#include <optional>
#include <string>
#include <string_view>

#include "platform/settings.h"

namespace velmora {

/// The settings tree in the user's settings file. What is saved within one turn of the event loop reaches the file
/// together, and leaves alone what somebody else has changed there meanwhile. The file on disk is always a whole one,
/// also where the disk is full, and only its owner can read it, as it holds passwords.
///
/// A file that can't be read, or that isn't a settings file, is never written: what can be read of it counts, the
/// rest are defaults, and what is saved counts until the program ends. One that others can read or write, or that lies
/// in such a folder, is made its owner's alone; where that can't be, it is neither read nor written.
class QtSettings : public SettingsStore {
 public:
  QtSettings();
  ~QtSettings() override;
  QtSettings(const QtSettings&) = delete;
  QtSettings& operator=(const QtSettings&) = delete;

  /// The file could not be read as a whole, so nothing will be saved.
  bool isDamaged() const { return damaged_; }
  /// The file or folder that was found open to others, so that nothing was read and nothing will be saved.
  const std::optional<QString>& openFile() const { return open_; }
  /// What is saved outlives the program.
  bool isKept() const { return !damaged_ && !open_; }
  QString fileName() const { return file_; }

  std::string GetSetting(std::string_view section, std::string_view key, std::string_view fallback) const override;
  void SaveSetting(std::string_view section, std::string_view key, std::string_view value) override;
  void DeleteSetting(std::string_view section, std::string_view key) override;

 private:
  bool read();
  void change(const QString& path, const QVariant& value);
  void apply(const QString& path, const QVariant& value);
  void save();
  QByteArray composed() const;

  QString file_;
  std::optional<QString> open_;
  QMap<QString, QVariant> values_;
  QMap<QString, QVariant> changes_;  ///< since the last save; an invalid value is one that was removed
  QTimer soon_;
  bool damaged_;
};

}  // namespace velmora
