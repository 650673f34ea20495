#include <QLoggingCategory>
#include <QObject>

#include "ui/browser/browser_plugin.h"
#include "ui/webengine/start_conditions.h"
#include "ui/webengine/web_engine_control.h"

namespace tessaril {

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
    return std::make_unique<WebEngineControl>(events, home);
  }
};

}  // namespace tessaril

#include "plugin.moc"
