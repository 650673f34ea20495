#include <QLoggingCategory>
#include <QObject>

#include "ui/browser/browser_plugin.h"
#include "ui/webengine/start_conditions.h"
#include "ui/webengine/web_engine_control.h"

namespace tessaril {
namespace {

constexpr char kFlags[] = "QTWEBENGINE_CHROMIUM_FLAGS";

// Makes the component, which reads its flags when it is first made. To it each file of the disk is a site of
// its own, as in other browsers: a page shows pictures and frames of its folder, but its scripts read none of
// them.
std::unique_ptr<BrowserControl> MakeWithFilesApart(BrowserEvents& events, const QUrl& home) {
  const bool has_flags = qEnvironmentVariableIsSet(kFlags);
  const QByteArray flags = qgetenv(kFlags);
  qputenv(kFlags, flags + " --blink-settings=allowFileAccessFromFileURLs=false");
  auto control = std::make_unique<WebEngineControl>(events, home);
  has_flags ? qputenv(kFlags, flags) : qunsetenv(kFlags);  // programs started later get them as they were
  return control;
}

}  // namespace

/// The object in the plugin.
class WebEnginePlugin : public QObject, public BrowserPlugin {
  Q_OBJECT
  Q_PLUGIN_METADATA(IID "tessaril.BrowserPlugin/1")
  Q_INTERFACES(tessaril::BrowserPlugin)

 public:
  std::unique_ptr<BrowserControl> Make(BrowserEvents& events, const QUrl& home,
                                       std::string& reason) override {
    if (!CanStart(reason)) return nullptr;
    // At its start the component lists what it found of the machine's graphics.
    QLoggingCategory::setFilterRules("qt.webenginecontext*=false");
    return MakeWithFilesApart(events, home);
  }
};

}  // namespace tessaril

#include "plugin.moc"
