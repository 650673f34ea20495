#ifndef TESSARIL_TESTS_UI_SUPPORT_RECORDED_BROWSER_H_
#define TESSARIL_TESTS_UI_SUPPORT_RECORDED_BROWSER_H_

#include <string>
#include <utility>
#include <vector>

#include "ui/browser/browser_control.h"

namespace tessaril {

/// A browser component that shows nothing: it keeps what it is asked for, and says what a test wants.
struct RecordedBrowser {
  int made = 0;
  bool can_start = true;
  std::vector<std::string> asked;  // taken out with Asked
  BrowserEvents* events = nullptr;
  QString name;
  QString address;
  bool busy = false;
  QByteArray pdf;

  std::vector<std::string> Asked() { return std::exchange(asked, {}); }

  /// The whole load of a page.
  void Complete(const QString& page_name, const QString& page_address) {
    events->DownloadBegun();
    name = page_name;
    address = page_address;
    events->TitleChanged(page_name);
    events->DownloadCompleted();
  }

  MakeBrowserControl Maker() {
    return [this](BrowserEvents& told, std::string& reason) -> std::unique_ptr<BrowserControl> {
      ++made;
      events = &told;
      reason = "nothing there";
      if (!can_start) return nullptr;
      return std::make_unique<Control>(*this);
    };
  }

 private:
  class Control : public BrowserControl {
   public:
    explicit Control(RecordedBrowser& record) : record_(record) { widget_.setFocusPolicy(Qt::StrongFocus); }
    QWidget* Widget() override { return &widget_; }
    void Navigate(const QUrl& wanted) override { Note(wanted.toString(QUrl::FullyEncoded)); }
    void GoBack() override { Note("back"); }
    void GoForward() override { Note("forward"); }
    void GoHome() override { Note("home"); }
    void GoSearch() override { Note("search"); }
    void Refresh() override { Note("refresh"); }
    void Stop() override { Note("stop"); }
    QString LocationName() const override { return record_.name; }
    QString LocationURL() const override { return record_.address; }
    bool Busy() const override { return record_.busy; }
    void MakePdf(const QPageLayout&, std::function<void(const QByteArray& pdf)> done) override {
      done(record_.pdf);
    }

   private:
    void Note(const QString& what) { record_.asked.push_back(what.toStdString()); }

    RecordedBrowser& record_;
    QWidget widget_;
  };
};

}  // namespace tessaril

#endif  // TESSARIL_TESTS_UI_SUPPORT_RECORDED_BROWSER_H_
