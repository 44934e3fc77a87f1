#pragma once

#include <QSettings>
#include <QString>
#include <string>
#include <string_view>

#include "platform/settings.h"

namespace velmora {

/// The settings tree in the user's settings file. What is saved within one turn of the event loop reaches the file
/// together; the file on disk is always a whole one, and only its owner can read it, as it holds passwords.
///
/// A file that can't be read, or that isn't a settings file, is never written: what can be read of it counts, the
/// rest are defaults.
class QtSettings : public SettingsStore {
 public:
  QtSettings();

  /// The file could not be read as a whole, so nothing will be saved.
  bool isDamaged() const { return damaged_; }
  QString fileName() const { return settings_.fileName(); }

  std::string GetSetting(std::string_view section, std::string_view key, std::string_view fallback) const override;
  void SaveSetting(std::string_view section, std::string_view key, std::string_view value) override;
  void DeleteSetting(std::string_view section, std::string_view key) override;

 private:
  QSettings settings_;
  bool damaged_;
};

}  // namespace velmora
