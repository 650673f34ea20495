#ifndef TESSARIL_UI_PRINTING_PRINTING_NOTICE_H_
#define TESSARIL_UI_PRINTING_PRINTING_NOTICE_H_

#include <QElapsedTimer>
#include <QLabel>

namespace tessaril {

/// Says in the middle of a window that the program is printing, as long as it lives. What the user does
/// meanwhile waits.
class PrintingNotice {
 public:
  explicit PrintingNotice(QWidget& window);
  ~PrintingNotice();
  PrintingNotice(const PrintingNotice&) = delete;
  PrintingNotice& operator=(const PrintingNotice&) = delete;

  /// A page, counted from 1, is begun. Shown a few times a second.
  void ShowPage(int page);

 private:
  QLabel lblPrinting_;
  QElapsedTimer since_repaint_;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_PRINTING_PRINTING_NOTICE_H_
