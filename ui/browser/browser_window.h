#ifndef TESSARIL_UI_BROWSER_BROWSER_WINDOW_H_
#define TESSARIL_UI_BROWSER_BROWSER_WINDOW_H_

#include <QPushButton>
#include <QTimer>
#include <QWidget>
#include <memory>
#include <string>

#include "ui/browser/address_bar.h"
#include "ui/browser/browser_control.h"
#include "ui/browser/status_bar.h"
#include "ui/browser/tool_bar.h"
#include "ui/printing/print_target.h"
#include "ui/shared/session.h"

namespace tessaril {

/// The window `frmBrowser` around a browser component. Its title is the shown page's.
class BrowserWindow : public QWidget, private BrowserEvents {
  Q_OBJECT

 public:
  /// Makes the window and the component in it. Null, and `reason` says why, when there is no component.
  static std::unique_ptr<BrowserWindow> Create(const Session& session, const MakeBrowserControl& make,
                                               std::string& reason);
  ~BrowserWindow() override;

  /// Shows a file as the first of all; to be called once, when the window is shown.
  void Start(const std::string& path);

  /// Shows a file. Its name need not be any text.
  void Show(const std::string& path);

  /// Whether "To Main" can be pressed.
  void OfferMain(bool offered) { Reset->setEnabled(offered); }

  /// The path of the file that the address box names; one at which there is none when it names something
  /// else.
  std::string ShownFile() const;

  /// Gives the page the focus.
  void FocusPage();

 signals:
  /// The user wants to go back to the main window.
  void ToMain();

  /// The user wants to edit the file that is shown.
  void EditHtml();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  explicit BrowserWindow(const Session& session);

  void StatusTextChanged(const QString& text) override;
  void ProgressChanged(int progress, int max) override;
  void DownloadBegun() override;
  void DownloadCompleted() override;
  void TitleChanged(const QString& title) override;
  QString AskWhereToSave(const QString& name) override;
  void SavingFailed(const QString& path, const QString& reason) override;

  void Take(std::unique_ptr<BrowserControl> control);
  void MakeKeys();
  void PressEdit();
  void Use(Tool tool);
  void Stop();
  void LookWhetherBusy();
  void GoToTyped();
  void Print();
  void DeliverPage(PrintTarget& target, const QByteArray& pdf);
  void ShowTitle();
  void LayOut();

  const Session& session_;
  ToolBar* tbToolBar;
  QPushButton* Reset;
  QPushButton* Command1;
  QPushButton* PrintWB;
  AddressBar* picAddress;
  StatusBar* StatusBar1;
  QTimer* timTimer;
  std::unique_ptr<BrowserControl> control_;
  std::string path_;    // of the file that was shown last
  float progress_ = 0;  // the last of the page that is being loaded
};

}  // namespace tessaril

#endif  // TESSARIL_UI_BROWSER_BROWSER_WINDOW_H_
