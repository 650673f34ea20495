#include "ui/browser/browser_plugin.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QPluginLoader>

#include "engine/paths.h"
#include "ui/browser/addresses.h"

namespace tessaril {
namespace {

QString PluginFile(const std::string& folder) {
  const std::string name = std::string("lib") + kBrowserPlugin + ".so";
  return QFile::decodeName(JoinPath(folder, name).c_str());
}

}  // namespace

MakeBrowserControl BrowserFromPlugin(const std::string& folder) {
  return [folder](BrowserEvents& events, std::string& reason) -> std::unique_ptr<BrowserControl> {
    QPluginLoader loader(PluginFile(folder));
    auto* const plugin = qobject_cast<BrowserPlugin*>(loader.instance());
    if (plugin != nullptr) return plugin->Make(events, FileAddress(JoinPath(folder, kHomePage)), reason);
    reason = PluginFile(folder).toStdString() + ": " +
             (loader.isLoaded() ? "made for another version" : loader.errorString().toStdString());
    return nullptr;
  };
}

// The component shares what it draws with the toolkit, which must know that from its beginning.
void PrepareForBrowser(const std::string& folder) {
  if (!QFileInfo::exists(PluginFile(folder))) return;
  QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
  QCoreApplication::setAttribute(
      Qt::AA_DisableShaderDiskCache);  // nothing is left behind in the user's folder
}

}  // namespace tessaril
