#include "ui/browser/browser_window.h"

#include <QCloseEvent>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QPointer>
#include <QShortcut>
#include <utility>

#include "engine/disk_files.h"
#include "ui/browser/addresses.h"
#include "ui/shared/controls.h"
#include "ui/shared/message_boxes.h"
#include "ui/shared/save_file.h"
#include "ui/shared/stand_ins.h"
#include "ui/shared/texts.h"

namespace tessaril {
namespace {

constexpr int kSideMargins = 100;  // twips that the page is narrower than the window
constexpr int kBelowPage = 320;    // twips between the page and the bottom of the window
constexpr int kStatusHeight = 300;
constexpr int kTick = 5;  // milliseconds

// A path; where it holds what cannot be seen, its address.
QString ShownPath(const std::string& path) {
  const QString shown = Shown(path);
  return shown == Characters(path) ? shown : FileAddress(path).toString(QUrl::FullyEncoded);
}

}  // namespace

std::unique_ptr<BrowserWindow> BrowserWindow::Create(const Session& session, const MakeBrowserControl& make,
                                                     std::string& reason) {
  std::unique_ptr<BrowserWindow> window(new BrowserWindow(session));
  std::unique_ptr<BrowserControl> control = make(*window, reason);
  if (control == nullptr) return nullptr;
  window->Take(std::move(control));
  return window;
}

BrowserWindow::BrowserWindow(const Session& session)
    : session_(session),
      tbToolBar(new ToolBar(this)),
      Reset(MakeButton(this, "Reset", {3100, 72, 1020, 264}, "To &Main", "Back to the main screen")),
      Command1(MakeButton(this, "Command1", {4100, 72, 1020, 264}, "Edit &HTML",
                          "Edit the HTML code of this file.")),
      PrintWB(MakeButton(this, "PrintWB", {5112, 72, 1020, 264}, "&Print", "")),
      picAddress(new AddressBar(this)),
      StatusBar1(new StatusBar(this)),
      timTimer(new QTimer(this)) {
  setObjectName("frmBrowser");
  timTimer->setObjectName("timTimer");
  timTimer->setInterval(kTick);
  connect(timTimer, &QTimer::timeout, this, &BrowserWindow::LookWhetherBusy);
  connect(Reset, &QPushButton::clicked, this, &BrowserWindow::ToMain);
  connect(Command1, &QPushButton::clicked, this, &BrowserWindow::PressEdit);
  connect(PrintWB, &QPushButton::clicked, this, &BrowserWindow::Print);
  connect(tbToolBar, &ToolBar::Pressed, this, &BrowserWindow::Use);
  connect(picAddress, &AddressBar::Wanted, this, &BrowserWindow::GoToTyped);
  connect(picAddress, &AddressBar::Entered, this, &BrowserWindow::FocusPage);
  MakeKeys();
}

// The component's widget leaves the window before the window takes its children with it.
BrowserWindow::~BrowserWindow() {
  timTimer->stop();
  control_.reset();
}

void BrowserWindow::Take(std::unique_ptr<BrowserControl> control) {
  control_ = std::move(control);
  QWidget* const page = control_->Widget();
  page->setParent(this);
  page->setObjectName("brwWebBrowser");
  page->show();
  LayOut();
}

void BrowserWindow::MakeKeys() {
  const auto add = [this](const QKeySequence& key, auto does) {
    connect(new QShortcut(key, this, nullptr, nullptr, Qt::WidgetWithChildrenShortcut), &QShortcut::activated,
            this, does);
  };
  add(Qt::Key_F5, [this] { Use(Tool::kRefresh); });
  add(Qt::ALT | Qt::Key_Left, [this] { Use(Tool::kBack); });
  add(Qt::ALT | Qt::Key_Right, [this] { Use(Tool::kForward); });
  add(Qt::Key_Escape, [this] {
    Use(Tool::kStop);
    if (picAddress->isAncestorOf(focusWidget())) picAddress->Show(control_->LocationURL());
  });
  add(Qt::CTRL | Qt::Key_L, [this] { picAddress->BeginTyping(); });
}

void BrowserWindow::PressEdit() {
  if (Command1->property(kTag) == "0") {
    return Tell(this, "Cancel dial-up window(s) to complete the \"download\"!");
  }
  emit EditHtml();
}

void BrowserWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (Reset->isEnabled()) emit ToMain();
}

// Its name need not be the text that the box shows.
std::string BrowserWindow::ShownFile() const {
  const QString address = picAddress->Text();
  return address == ShownPath(path_) ? path_ : FileOfAddress(address, session_.files.CurrentFolder());
}

void BrowserWindow::Start(const std::string& path) {
  path_ = path;
  picAddress->Show(ShownPath(path));
  picAddress->Remember(ShownPath(path));
  timTimer->start();
  control_->Navigate(FileAddress(path));
}

void BrowserWindow::Show(const std::string& path) {
  path_ = path;
  picAddress->Show(ShownPath(path));
  control_->Navigate(FileAddress(path));
}

void BrowserWindow::FocusPage() {
  control_->Widget()->setFocus();
}

void BrowserWindow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (!window()->isMinimized()) LayOut();
}

void BrowserWindow::LayOut() {
  picAddress->setGeometry(0, tbToolBar->geometry().bottom() + 1, width(), picAddress->height());
  const int top = picAddress->geometry().bottom() + 1;
  control_->Widget()->setGeometry(Pixels(kSideMargins / 2), top, width() - Pixels(kSideMargins),
                                  height() - top - Pixels(kBelowPage));
  StatusBar1->setGeometry(0, height() - Pixels(kStatusHeight), width(), Pixels(kStatusHeight));
}

void BrowserWindow::Use(Tool tool) {
  timTimer->start();
  switch (tool) {
    case Tool::kBack:
      return control_->GoBack();
    case Tool::kForward:
      return control_->GoForward();
    case Tool::kStop:
      return Stop();
    case Tool::kRefresh:
      return control_->Refresh();
    case Tool::kHome:
      return control_->GoHome();
    case Tool::kSearch:
      return control_->GoSearch();
  }
}

void BrowserWindow::Stop() {
  timTimer->stop();
  control_->Stop();
  ShowTitle();
}

void BrowserWindow::LookWhetherBusy() {
  if (control_->Busy()) return setWindowTitle("Working...");
  timTimer->stop();
  ShowTitle();
}

void BrowserWindow::ShowTitle() {
  setWindowTitle(Harmless(control_->LocationName()));
}

void BrowserWindow::GoToTyped() {
  const QUrl address = TypedAddress(picAddress->Text(), session_.files.CurrentFolder());
  if (address.isEmpty()) return StatusTextChanged("Not an address: " + picAddress->Text());
  timTimer->start();
  control_->Navigate(address);
}

void BrowserWindow::StatusTextChanged(const QString& text) {
  StatusBar1->Show(StatusBar::kStatusText, text);
}

void BrowserWindow::ProgressChanged(int progress, int max) {
  if (max == 0) return;
  const auto all = static_cast<float>(max);
  progress_ = progress == -1 ? all : static_cast<float>(progress);
  const int percent = static_cast<int>(progress_ / all * 100 + 0.5F);
  StatusBar1->Show(StatusBar::kProgress, "Got " + QString::number(percent) + " %");
}

void BrowserWindow::DownloadBegun() {
  Command1->setProperty(kTag, "0");
}

void BrowserWindow::DownloadCompleted() {
  ShowTitle();
  Command1->setProperty(kTag, "");
  const QString address = control_->LocationURL();
  if (address.isEmpty()) return;  // what was wanted can be mended in the box
  picAddress->Show(address);
  picAddress->Remember(address);
}

void BrowserWindow::TitleChanged(const QString& title) {
  StatusBar1->Show(StatusBar::kPageTitle, title);
}

QString BrowserWindow::AskWhereToSave(const QString& name) {
  QFileDialog dialog(this, "Save As", QFile::decodeName(session_.files.CurrentFolder().c_str()));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.selectFile(name);
  if (dialog.exec() != QDialog::Accepted) return {};
  const QString path = dialog.selectedFiles().value(0);
  DiskFiles files;
  const Status status = LookBeforeSaving(files, QFile::encodeName(path).toStdString());
  if (!status.ok()) {
    SavingFailed(path, Shown(status.reason()));
    return {};
  }
  const QFileInfo target(path);
  return target.exists() ? target.canonicalFilePath() : path;  // a link stays one
}

void BrowserWindow::SavingFailed(const QString& path, const QString& reason) {
  Tell(this, "Not saved: " + path.toStdString() + ": " + reason.toStdString());
}

// The component makes the document in its own time; the window may be gone by then.
void BrowserWindow::Print() {
  auto target = std::make_shared<PrintTarget>(control_->LocationName());
  if (!target->Choose(this)) return;
  StatusTextChanged("Printing ...");
  control_->MakePdf(target->Layout(), [target, window = QPointer(this)](const QByteArray& pdf) {
    if (window != nullptr) window->DeliverPage(*target, pdf);
  });
}

void BrowserWindow::DeliverPage(PrintTarget& target, const QByteArray& pdf) {
  const Status status =
      pdf.isEmpty() ? Status::Failure("The page cannot be drawn")
                    : target.Deliver({pdf.data(), static_cast<std::size_t>(pdf.size())}, target.Copies());
  StatusTextChanged(status.ok() ? "Printed" : "Not printed: " + Shown(status.reason()));
}

}  // namespace tessaril
