#ifndef TESSARIL_UI_DIALOGS_ABOUT_BOX_H_
#define TESSARIL_UI_DIALOGS_ABOUT_BOX_H_

#include <QDialog>

namespace tessaril {

/// The about box frmAbout: what the program is. It has a fixed size, is not modal, and deletes itself when it
/// is closed.
class AboutBox : public QDialog {
  Q_OBJECT

 public:
  explicit AboutBox(QWidget* parent = nullptr);

 signals:
  void SystemInfoWanted();
  void HelpWanted();  // F1
};

}  // namespace tessaril

#endif  // TESSARIL_UI_DIALOGS_ABOUT_BOX_H_
