#ifndef TESSARIL_UI_WEBENGINE_PAGE_H_
#define TESSARIL_UI_WEBENGINE_PAGE_H_

#include <QWebEnginePage>
#include <QWebEngineProfile>

#include "ui/webengine/page_question.h"

namespace tessaril {

/// A page that is shown under this program's rules: no permissions for pages, no reading of the user's files
/// by script, new windows opened in the place of this one. Nothing of what it shows stays on the disk.
class Page : public QWebEnginePage {
  Q_OBJECT

 public:
  explicit Page(QWebEngineProfile* profile);

  /// The page's title, or its address when it has none.
  QString Name() const;

  /// Ends the process that shows the page, whatever the page is doing.
  void EndProcess();

  /// The user has asked for another page, or for this one anew.
  void BeginAnew() { said_ = 0; }

 protected:
  void javaScriptAlert(const QUrl& origin, const QString& text) override;
  bool javaScriptConfirm(const QUrl& origin, const QString& text) override;
  bool javaScriptPrompt(const QUrl& origin, const QString& text, const QString& proposed,
                        QString* answer) override;
  void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString& message, int line,
                                const QString& source) override;

 private:
  bool Ask(PageQuestion& question);
  bool MayStop() const { return said_ > 0; }

  int said_ = 0;  // what scripts said since the user last asked for a page
};

}  // namespace tessaril

#endif  // TESSARIL_UI_WEBENGINE_PAGE_H_
