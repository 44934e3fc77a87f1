#include "platform/qt/services/desktop_applications.h"

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>
#include <unistd.h>

#include <QFile>
#include <memory>
#include <string_view>
#include <vector>

#include "platform/mime/glib_ptr.h"
#else
#include <QDesktopServices>
#include <QUrl>
#endif

namespace velmora {

#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)

namespace {

struct ListDeleter {
  void operator()(GList* list) const { g_list_free_full(list, g_object_unref); }
};

struct ShallowDeleter {
  void operator()(GList* list) const { g_list_free(list); }
};

using ApplicationPtr = mime::ObjectPtr<GDesktopAppInfo>;

/// A hidden entry is a deleted one.
ApplicationPtr applicationOf(const QString& entry) {
  ApplicationPtr application(g_desktop_app_info_new_from_filename(QFile::encodeName(entry).constData()));
  if (application && g_desktop_app_info_get_is_hidden(application.get()) != FALSE) application.reset();
  return application;
}

bool startAs(GDesktopAppInfo& application, const QStringList& addresses, qint64& process) {
  std::vector<QByteArray> texts;
  for (const QString& address : addresses) texts.push_back(address.toUtf8());
  GList* list = nullptr;
  for (QByteArray& text : texts) list = g_list_append(list, text.data());
  const std::unique_ptr<GList, ShallowDeleter> uris(list);
  // What ends the program's own session, such as Ctrl+C in its terminal, must not end the application.
  const auto leaveSession = [](gpointer) { setsid(); };
  const auto keepNumber = [](GDesktopAppInfo*, GPid number, gpointer kept) { *static_cast<qint64*>(kept) = number; };
  return g_desktop_app_info_launch_uris_as_manager(&application, uris.get(), nullptr, G_SPAWN_SEARCH_PATH, leaveSession,
                                                   nullptr, keepNumber, &process, nullptr) != FALSE;
}

/// Without the codes that stand for files, which would take the address and give nothing for it.
QByteArray withoutFiles(const char* line) {
  constexpr std::string_view codes = "fFdDnN";
  QByteArray kept;
  for (const char* c = line; *c != '\0'; ++c) {
    const bool isCode = c[0] == '%' && c[1] != '\0';
    if (!isCode || codes.find(c[1]) == codes.npos) kept.append(c, isCode ? 2 : 1);
    if (isCode) ++c;
  }
  return kept;
}

/// The program of an application to be started by its command line, where that tells more than the application itself:
/// one that the bus starts answers before it is known whether it can, and one that takes files only, or nothing, would
/// get no address. Null where there is no need of it.
ApplicationPtr byCommandLine(GDesktopAppInfo& application, const QStringList& addresses) {
  GAppInfo* info = G_APP_INFO(&application);
  const char* line = g_app_info_get_commandline(info);
  const bool wantsAddress = !addresses.empty() && !addresses.first().startsWith("file:");
  const bool addressLost = wantsAddress && g_app_info_supports_uris(info) == FALSE;
  const bool byBus = g_desktop_app_info_get_boolean(&application, "DBusActivatable") != FALSE;
  if (line == nullptr || (!addressLost && !byBus)) return nullptr;
  const bool terminal = g_desktop_app_info_get_boolean(&application, "Terminal") != FALSE;
  const int flags = (addressLost ? G_APP_INFO_CREATE_SUPPORTS_URIS : G_APP_INFO_CREATE_NONE) |
                    (terminal ? G_APP_INFO_CREATE_NEEDS_TERMINAL : G_APP_INFO_CREATE_NONE);
  return ApplicationPtr(G_DESKTOP_APP_INFO(
      g_app_info_create_from_commandline(addressLost ? withoutFiles(line).constData() : line, g_app_info_get_name(info),
                                         static_cast<GAppInfoCreateFlags>(flags), nullptr)));
}

bool start(GDesktopAppInfo& application, const QStringList& addresses, qint64& process) {
  if (const ApplicationPtr program = byCommandLine(application, addresses)) {
    return startAs(*program, addresses, process);
  }
  return startAs(application, addresses, process);
}

}  // namespace

std::map<QString, QString> mailApplications() {
  std::map<QString, QString> entries;
  const std::unique_ptr<GList, ListDeleter> all(g_app_info_get_all_for_type("x-scheme-handler/mailto"));
  for (const GList* each = all.get(); each != nullptr; each = each->next) {
    auto* application = static_cast<GDesktopAppInfo*>(each->data);
    const char* file = g_desktop_app_info_get_filename(application);
    QString id = QFile::decodeName(g_app_info_get_id(G_APP_INFO(application)));
    if (file != nullptr && id.endsWith(".desktop")) entries.emplace(id.chopped(8), QFile::decodeName(file));
  }
  return entries;
}

bool startApplication(const QString& entry, const QStringList& addresses, qint64& process) {
  const ApplicationPtr application = applicationOf(entry);
  return application && start(*application, addresses, process);
}

bool openWithApplication(const QString& address) {
  const QByteArray text = address.toUtf8();
  const mime::ObjectPtr<GFile> file(g_file_new_for_uri(text.constData()));
  const mime::ObjectPtr<GAppInfo> application(g_file_query_default_handler(file.get(), nullptr, nullptr));
  qint64 process = 0;
  return G_IS_DESKTOP_APP_INFO(application.get()) && start(*G_DESKTOP_APP_INFO(application.get()), {address}, process);
}

QStringList applicationPictures(const QString& entry) {
  const ApplicationPtr application = applicationOf(entry);
  GIcon* icon = application ? g_app_info_get_icon(G_APP_INFO(application.get())) : nullptr;
  if (G_IS_FILE_ICON(icon)) {
    const mime::TextPtr path(g_file_get_path(g_file_icon_get_file(G_FILE_ICON(icon))));
    return {QFile::decodeName(path.get())};
  }
  QStringList names;
  if (!G_IS_THEMED_ICON(icon)) return names;
  for (const char* const* name = g_themed_icon_get_names(G_THEMED_ICON(icon)); *name != nullptr; ++name) {
    names += QString::fromUtf8(*name);
  }
  return names;
}

#else

std::map<QString, QString> mailApplications() { return {}; }

bool startApplication(const QString& /*entry*/, const QStringList& /*addresses*/, qint64& /*process*/) { return false; }

bool openWithApplication(const QString& address) { return QDesktopServices::openUrl(QUrl(address)); }

QStringList applicationPictures(const QString& /*entry*/) { return {}; }

#endif

}  // namespace velmora
