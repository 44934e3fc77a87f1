#include "platform/qt/services/whole_file.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include "platform/file_draft.h"
#include "platform/qt/services/private_files.h"

namespace velmora {

namespace {

class SavedFile : public FileDraft {
 public:
  explicit SavedFile(const QString& path) : file_(path) {}

  /// Buffered, it would take a write that a full disk cut short for a whole one. It gets its rights before there is
  /// anything in it; a disk that knows no rights is the user's choice.
  bool open() {
    if (!file_.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) return false;
    file_.setPermissions(ownersFile);
    return true;
  }

  bool write(std::string_view bytes) override {
    const auto size = static_cast<qint64>(bytes.size());
    return file_.write(bytes.data(), size) == size;
  }

  bool keep() override { return file_.commit(); }

 private:
  QSaveFile file_;
};

}  // namespace

std::unique_ptr<FileDraft> draftOf(const QString& path) {
  auto draft = std::make_unique<SavedFile>(path);
  if (!draft->open()) return nullptr;
  return draft;
}

bool writeWholeFile(const QString& path, QByteArrayView content) {
  const auto draft = draftOf(path);
  return draft && draft->write({content.data(), static_cast<std::size_t>(content.size())}) && draft->keep();
}

std::optional<QByteArray> readWholeFile(const QString& path, qint64 largest) {
  QFile file(path);
  if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly)) return std::nullopt;
  QByteArray content = file.read(largest + 1);
  if (file.error() != QFileDevice::NoError || content.size() > largest) return std::nullopt;
  return content;
}

}  // namespace velmora
