#ifndef TESSARIL_UI_WEBENGINE_PAGE_H_
#define TESSARIL_UI_WEBENGINE_PAGE_H_

#include <QWebEnginePage>
#include <QWebEngineProfile>

namespace tessaril {

/// A page that is shown under this program's rules: no permissions for pages, no reading of the user's files
/// by script, new windows opened in the place of this one. Nothing of what it shows stays on the disk.
class Page : public QWebEnginePage {
  Q_OBJECT

 public:
  explicit Page(QWebEngineProfile* profile);

  /// The page's title, or its address when it has none.
  QString Name() const;

 protected:
  void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString& message, int line,
                                const QString& source) override;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_WEBENGINE_PAGE_H_
