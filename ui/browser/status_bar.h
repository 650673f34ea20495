#ifndef TESSARIL_UI_BROWSER_STATUS_BAR_H_
#define TESSARIL_UI_BROWSER_STATUS_BAR_H_

#include <QWidget>
#include <array>

#include "ui/shared/cut_label.h"

namespace tessaril {

/// The bar `StatusBar1` at the bottom of the browser window.
class StatusBar : public QWidget {
  Q_OBJECT

 public:
  enum Panel { kProgress, kStatusText, kPageTitle };

  explicit StatusBar(QWidget* parent);

  /// A text that is too wide for its panel ends in dots.
  void Show(Panel panel, const QString& text) { panels_[panel]->SetText(text); }

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  std::array<CutLabel*, 3> panels_;  // named `StatusBar1_1` to `StatusBar1_3`
};

}  // namespace tessaril

#endif  // TESSARIL_UI_BROWSER_STATUS_BAR_H_
