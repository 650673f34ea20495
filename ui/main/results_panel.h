#ifndef TESSARIL_UI_MAIN_RESULTS_PANEL_H_
#define TESSARIL_UI_MAIN_RESULTS_PANEL_H_

#include <QLabel>
#include <QPushButton>
#include <QWidget>

#include "ui/shared/byte_text_box.h"

namespace tessaril {

/// The panel `Picture2`: the results box with the count of files and the button that saves it.
class ResultsPanel : public QWidget {
  Q_OBJECT

 public:
  explicit ResultsPanel(QWidget* parent);

  QLabel* lblCount;
  QPushButton* cmdSaveAs;
  ByteTextBox* UdTxt;

  /// The look of the box: for a text that may be edited, or for one that is only a part of the report.
  void MakeEditable();
  void MakeReadOnly();

  /// Fills a frame of this size, in pixels.
  void FitInto(QSize frame);

  /// The font of the results box: one in which all characters are of one width, or the usual one.
  void UseMonospacedFont(bool monospaced);
};

}  // namespace tessaril

#endif  // TESSARIL_UI_MAIN_RESULTS_PANEL_H_
