#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QVariant>
#include <optional>
#include <string>
#include <string_view>

#include "platform/settings.h"

namespace velmora {

/// The settings tree in the user's settings file. What is kept reaches the file in one step, and leaves alone what
/// somebody else has changed there meanwhile. The file on disk is always a whole one, also where the disk is full, and
/// only its owner can read it, as it holds passwords.
///
/// A file that can't be read, that isn't a settings file, or of which the end is missing, is never written: what can be
/// read of it counts, the rest are defaults. One that others can read or write, or that lies in such a folder, is made
/// its owner's alone; where that can't be, it is neither read nor written.
class QtSettings : public SettingsStore {
 public:
  QtSettings();

  /// The file could not be read as a whole, so nothing will be saved.
  bool isDamaged() const { return damaged_; }
  /// The file or folder that was found open to others, so that nothing was read and nothing will be saved.
  const std::optional<QString>& openFile() const { return open_; }
  /// What is saved may outlive the program.
  bool isKept() const { return !damaged_ && !open_; }
  static QString fileName();

  std::string GetSetting(std::string_view section, std::string_view key, std::string_view fallback) const override;
  void SaveSetting(std::string_view section, std::string_view key, std::string_view value) override;
  void DeleteSetting(std::string_view section, std::string_view key) override;
  std::optional<std::string> Keep() override;
  void Protect() override { damaged_ = true; }

 private:
  using Values = QMap<QString, QVariant>;

  std::optional<std::string> write(const Values& changes);

  QString file_ = fileName();
  std::optional<QString> open_;
  Values stored_;   ///< what the file held when it was last read
  Values changes_;  ///< since the last Keep; an invalid value is one that was removed
  bool damaged_ = false;
};

}  // namespace velmora
