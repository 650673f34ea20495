#ifndef TESSARIL_UI_BROWSER_BROWSER_PLUGIN_H_
#define TESSARIL_UI_BROWSER_BROWSER_PLUGIN_H_

#include <QtPlugin>

#include "ui/browser/browser_control.h"

namespace tessaril {

/// What the object in the plugin with the browser component can do.
class BrowserPlugin {
 public:
  virtual ~BrowserPlugin() = default;

  /// As `MakeBrowserControl`; `home` is the address of the component's home page.
  virtual std::unique_ptr<BrowserControl> Make(BrowserEvents& events, const QUrl& home,
                                               std::string& reason) = 0;
};

/// Where the plugin stands beside the program, without what the platform puts before and behind such a name.
inline constexpr char kBrowserPlugin[] = "tessaril_browser";

/// The component from the plugin in a folder, which also holds its home page `kHomePage`. The plugin is
/// loaded when a component is made.
MakeBrowserControl BrowserFromPlugin(const std::string& folder);
inline constexpr char kHomePage[] = "home.htm";

/// Does what has to be done for the component before there is an application object, when the plugin is
/// there.
void PrepareForBrowser(const std::string& folder);

}  // namespace tessaril

Q_DECLARE_INTERFACE(tessaril::BrowserPlugin, "tessaril.BrowserPlugin/1")

#endif  // TESSARIL_UI_BROWSER_BROWSER_PLUGIN_H_
