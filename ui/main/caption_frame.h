#ifndef TESSARIL_UI_MAIN_CAPTION_FRAME_H_
#define TESSARIL_UI_MAIN_CAPTION_FRAME_H_

#include <QGroupBox>

namespace tessaril {

/// A group of controls with its caption on the upper line of the frame, so that the controls may begin right
/// below the caption.
class CaptionFrame : public QGroupBox {
 public:
  using QGroupBox::QGroupBox;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_MAIN_CAPTION_FRAME_H_
